#pragma once

#include <cstddef>

namespace AC {

/// \return Whether no two entries of the array are equal.
template <class Array>
constexpr bool AreDistinct(const Array& array)
{
    for (std::size_t i = 0; i < array.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            if (array[i] == array[k])
                return false;
    return true;
}

}  // namespace AC
