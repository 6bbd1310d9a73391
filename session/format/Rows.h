#pragma once

#include <algorithm>
#include <iterator>

namespace Session {

/// \return The first row of an array that fits, or null.
template <class Rows, class Fits>
auto FindRow(const Rows& rows, Fits fits) -> decltype(std::begin(rows))
{
    const auto found = std::find_if(std::begin(rows), std::end(rows), fits);
    return found == std::end(rows) ? nullptr : found;
}

}  // namespace Session
