#pragma once

#include <cstddef>

namespace AC {

/// The rows of a table that stands elsewhere, with static storage.
template <class Row>
class Table
{
public:
    template <std::size_t N>
    constexpr explicit Table(const Row (&rows)[N]) : mBegin(rows), mEnd(rows + N)
    {
    }

    constexpr const Row* begin() const { return mBegin; }
    constexpr const Row* end() const { return mEnd; }

private:
    const Row* mBegin;
    const Row* mEnd;
};

}  // namespace AC
