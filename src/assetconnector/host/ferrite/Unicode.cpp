#include "assetconnector/host/ferrite/Unicode.h"

#include "assetconnector/host/ferrite/CodePoints.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>

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

/// How much is converted at a time: in ASCII, which most blocks are, many characters at once.
constexpr std::size_t kBlock = 256;

/// \return Whether all of the block is ASCII.
template <class Unit>
bool IsAscii(std::basic_string_view<Unit> block)
{
    Unit all = 0;
    for (const Unit unit : block)  // without an early end, and so several units at a time
        all = static_cast<Unit>(all | unit);
    return static_cast<std::make_unsigned_t<Unit>>(all) < 0x80;
}

/// Writes the character at the start of the text. \param out Has room for two units. \return Its length.
std::size_t WriteCharacter(std::string_view text, char16_t*& out)
{
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80) {
        *out++ = first;
        return 1;
    }
    const std::size_t length = SequenceLength(text);
    const char32_t point = length == 0 ? kReplacement : CodePoint(text.substr(0, length));
    if (point < 0x10000) {
        *out++ = static_cast<char16_t>(point);
    } else {
        *out++ = static_cast<char16_t>(0xD7C0U + (point >> 10U));
        *out++ = static_cast<char16_t>(0xDC00U + (point & 0x3FFU));
    }
    return std::max<std::size_t>(length, 1);
}

}  // namespace

UTF16String UTF8to16(std::string_view text)
{
    UTF16String result;
    result.reserve(text.size());
    AppendUTF8to16(text, result);
    return result;
}

void AppendUTF8to16(std::string_view text, UTF16String& result)
{
    std::array<char16_t, kBlock + 1> units;  // the last character may take two
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view block = text.substr(at, kBlock);
        const std::size_t blockEnd = at + block.size();
        char16_t* out = units.data();
        if (IsAscii(block)) {
            out = std::copy(block.begin(), block.end(), out);
            at = blockEnd;
        } else {
            while (at < blockEnd)
                at += WriteCharacter(text.substr(at), out);
        }
        result.append(units.data(), out);
    }
}

std::string UTF16to8(std::u16string_view text)
{
    std::string result;
    result.reserve(text.size());
    std::array<char, kBlock * kLongestSequence> bytes;
    const char16_t* at = text.data();
    const char16_t* const end = at + text.size();
    while (at != end) {
        const std::u16string_view block(at, std::min(kBlock, static_cast<std::size_t>(end - at)));
        const char16_t* const blockEnd = at + block.size();
        char* out = bytes.data();
        if (IsAscii(block)) {
            out = std::transform(at, blockEnd, out, [](char16_t unit) { return static_cast<char>(unit); });
            at = blockEnd;
        } else {
            while (at < blockEnd)  // a surrogate pair may end behind the block
                out = WriteCodePoint(ReadCodePoint(at, end), out);
        }
        result.append(bytes.data(), out);
    }
    return result;
}

}  // namespace ferrite::utility
