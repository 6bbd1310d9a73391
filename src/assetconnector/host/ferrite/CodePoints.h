#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// What the conversions between the two forms of a text share.
namespace ferrite::utility {

/// How many bytes a code point takes at most.
constexpr std::size_t kLongestSequence = 4;

/// \param at Not the end; moved behind what was read.
/// \return The code point; U+FFFD for an unpaired surrogate.
inline std::uint32_t ReadCodePoint(const char16_t*& at, const char16_t* end)
{
    const std::uint32_t unit = *at++;
    if (unit < 0xD800 || unit > 0xDFFF)
        return unit;
    if (unit > 0xDBFF || at == end || (*at & 0xFC00U) != 0xDC00U)
        return 0xFFFD;
    return 0x10000U + ((unit & 0x3FFU) << 10U) + (*at++ & 0x3FFU);
}

/// \param out Has room for kLongestSequence bytes. \return Where the sequence ends.
inline char* WriteCodePoint(std::uint32_t point, char* out)
{
    const auto put = [&out](std::uint32_t byte) { *out++ = static_cast<char>(byte); };
    if (point < 0x80) {
        put(point);
        return out;
    }
    if (point < 0x800) {
        put(0xC0U | (point >> 6U));
    } else {
        if (point < 0x10000) {
            put(0xE0U | (point >> 12U));
        } else {
            put(0xF0U | (point >> 18U));
            put(0x80U | ((point >> 12U) & 0x3FU));
        }
        put(0x80U | ((point >> 6U) & 0x3FU));
    }
    put(0x80U | (point & 0x3FU));
    return out;
}

}  // namespace ferrite::utility
