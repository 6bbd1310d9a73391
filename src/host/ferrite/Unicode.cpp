#include "host/ferrite/Unicode.h"

#include "host/ferrite/CodePoints.h"

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

template <class Unit>
constexpr bool IsAscii(Unit unit)
{
    return static_cast<std::make_unsigned_t<Unit>>(unit) < 0x80;
}

/// Appends the ASCII characters at the start of the text, many at once. \return How many.
template <class From, class To>
std::size_t AppendAscii(std::basic_string_view<From> text, std::basic_string<To>& result)
{
    constexpr std::size_t kBlock = 512;  // what is read twice and written twice stays in the cache
    std::size_t count = 0;
    for (bool isAscii = true; isAscii && count < text.size();) {
        const std::basic_string_view<From> block = text.substr(count, kBlock);
        From all = 0;
        for (const From unit : block)  // without an early end, and so several units at a time
            all = static_cast<From>(all | unit);
        isAscii = IsAscii(all);
        const auto* const end =
            isAscii ? block.end() : std::find_if_not(block.begin(), block.end(), IsAscii<From>);
        const std::size_t done = result.size();
        const auto size = static_cast<std::size_t>(end - block.begin());
        result.resize(done + size);
        std::transform(block.begin(), end, result.data() + done,
                       [](From unit) { return static_cast<To>(unit); });
        count += size;
    }
    return count;
}

/// Appends the character at the start of the text, which is beyond ASCII. \return How many bytes it took.
std::size_t AppendBeyondAscii(std::string_view text, UTF16String& result)
{
    const std::size_t length = SequenceLength(text);
    if (length == 0) {
        result.push_back(kReplacement);
        return 1;
    }
    const char32_t point = CodePoint(text.substr(0, length));
    if (point < 0x10000) {
        result.push_back(static_cast<char16_t>(point));
    } else {
        result.push_back(static_cast<char16_t>(0xD7C0U + (point >> 10U)));
        result.push_back(static_cast<char16_t>(0xDC00U + (point & 0x3FFU)));
    }
    return length;
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
    while (!text.empty())
        text.remove_prefix(IsAscii(text.front()) ? AppendAscii(text, result)
                                                 : AppendBeyondAscii(text, result));
}

std::string UTF16to8(std::u16string_view text)
{
    std::string result;
    result.reserve(text.size());
    const char16_t* at = text.data();
    const char16_t* const end = at + text.size();
    while (at != end) {
        if (IsAscii(*at)) {
            at += AppendAscii(std::u16string_view(at, static_cast<std::size_t>(end - at)), result);
            continue;
        }
        std::array<char, kLongestSequence> bytes{};
        result.append(bytes.data(), WriteCodePoint(ReadCodePoint(at, end), bytes.data()));
    }
    return result;
}

}  // namespace ferrite::utility
