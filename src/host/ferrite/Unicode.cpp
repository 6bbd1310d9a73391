#include "host/ferrite/Unicode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace ferrite::utility {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

/// What a first byte allows: how many bytes follow, and the range of the second one, which is where
/// overlong forms, surrogates and values above U+10FFFF show.
struct Lead
{
    std::size_t following;
    unsigned char low;
    unsigned char high;
};

constexpr Lead LeadOf(unsigned char byte)
{
    if (byte >= 0xC2 && byte <= 0xDF)
        return {1, 0x80, 0xBF};
    if (byte == 0xE0)
        return {2, 0xA0, 0xBF};
    if (byte == 0xED)
        return {2, 0x80, 0x9F};
    if (byte >= 0xE1 && byte <= 0xEF)
        return {2, 0x80, 0xBF};
    if (byte == 0xF0)
        return {3, 0x90, 0xBF};
    if (byte >= 0xF1 && byte <= 0xF3)
        return {3, 0x80, 0xBF};
    if (byte == 0xF4)
        return {3, 0x80, 0x8F};
    return {0, 0, 0};
}

/// \return The length of the well-formed sequence of several bytes at the start of text, or 0.
std::size_t SequenceLength(std::string_view text)
{
    const Lead lead = LeadOf(static_cast<unsigned char>(text[0]));
    if (lead.following == 0 || text.size() <= lead.following)
        return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    if (second < lead.low || second > lead.high)
        return 0;
    for (std::size_t i = 2; i <= lead.following; ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80)
            return 0;
    return lead.following + 1;
}

char32_t CodePoint(std::string_view sequence)
{
    const auto first = static_cast<unsigned char>(sequence[0]);
    char32_t value = first & (0x7FU >> sequence.size());
    for (const char byte : sequence.substr(1))
        value = (value << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    return value;
}

/// Appends the ASCII characters at the start of the text, all at once. \return How many.
std::size_t AppendAscii(std::u16string_view text, std::string& result)
{
    const auto* const end =
        std::find_if(text.begin(), text.end(), [](char16_t unit) { return unit >= 0x80; });
    const std::size_t done = result.size();
    const auto count = static_cast<std::size_t>(end - text.begin());
    result.resize(done + count);
    std::transform(text.begin(), end, result.begin() + static_cast<std::ptrdiff_t>(done),
                   [](char16_t unit) { return static_cast<char>(unit); });
    return count;
}

}  // namespace

UTF16String UTF8to16(std::string_view text)
{
    UTF16String result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte < 0x80) {
            result.push_back(byte);
            ++at;
            continue;
        }
        const std::size_t length = SequenceLength(text.substr(at));
        if (length == 0) {
            result.push_back(kReplacement);
            ++at;
            continue;
        }
        const char32_t point = CodePoint(text.substr(at, length));
        if (point < 0x10000) {
            result.push_back(static_cast<char16_t>(point));
        } else {
            result.push_back(static_cast<char16_t>(0xD7C0U + (point >> 10U)));
            result.push_back(static_cast<char16_t>(0xDC00U + (point & 0x3FFU)));
        }
        at += length;
    }
    return result;
}

std::string UTF16to8(std::u16string_view text)
{
    constexpr std::size_t kBlock = 4096;  // what is read twice and written twice stays in the cache
    std::string result;
    result.reserve(text.size());
    const auto put = [&result](std::uint32_t byte) { result.push_back(static_cast<char>(byte)); };
    std::size_t at = 0;
    while (at < text.size()) {
        const std::u16string_view block = text.substr(at, kBlock);
        const std::size_t count = AppendAscii(block, result);
        at += count;
        if (count == block.size())
            continue;
        std::uint32_t point = text[at];
        if (point >= 0xD800 && point <= 0xDFFF) {
            const bool pair = point < 0xDC00 && at + 1 < text.size() && (text[at + 1] & 0xFC00U) == 0xDC00U;
            point = pair ? 0x10000U + ((point & 0x3FFU) << 10U) + (text[++at] & 0x3FFU)
                         : static_cast<std::uint32_t>(kReplacement);
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
        ++at;
    }
    return result;
}

}  // namespace ferrite::utility
