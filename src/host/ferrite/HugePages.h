#pragma once

#include <cstddef>

namespace ferrite::utility {

/// Hints that a buffer is about to be filled, so that the system may back a large one with huge pages: fresh
/// memory costs more at the first touch of its pages than to fill. Does nothing for less than a few MB, and
/// where the system has no such hint. Any thread.
/// \param begin The buffer, which the caller owns. \param size Its bytes.
void PreferHugePages(void* begin, std::size_t size) noexcept;

}  // namespace ferrite::utility
