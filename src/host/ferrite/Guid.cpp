#include "host/ferrite/Guid.h"

#include "host/Host.h"

#include <array>
#include <cstddef>

namespace ferrite::utility {
namespace {

constexpr std::size_t kTextLength = 36;

/// Where the two digits of each byte begin.
constexpr std::array<std::uint8_t, 16> kBytePlaces{0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};
constexpr std::u16string_view kDigits = u"0123456789abcdef";

constexpr bool IsHyphenPlace(std::size_t at)
{
    return at == 8 || at == 13 || at == 18 || at == 23;
}

/// \return The digit's value, or -1.
constexpr int HexDigit(char16_t unit)
{
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10;
    return -1;
}

}  // namespace

Guid Guid::CreateUnique()
{
    return AC::InstalledHost().texts.CreateUniqueGuid();
}

Guid Guid::StringToGUID(std::u16string_view text) noexcept
{
    if (text.size() == kTextLength + 2 && text.front() == u'{' && text.back() == u'}')
        text = text.substr(1, kTextLength);
    if (text.size() != kTextLength)
        return {};
    std::array<std::uint64_t, 2> halves{};
    std::size_t digits = 0;
    for (std::size_t at = 0; at < kTextLength; ++at) {
        if (IsHyphenPlace(at)) {
            if (text[at] != u'-')
                return {};
            continue;
        }
        const int digit = HexDigit(text[at]);
        if (digit < 0)
            return {};
        std::uint64_t& half = halves[digits++ / 16];
        half = (half << 4U) | static_cast<std::uint64_t>(digit);
    }
    return {halves[0], halves[1]};
}

UTF16String Guid::AsString() const
{
    const std::array<std::uint64_t, 2> halves{static_cast<std::uint64_t>(mFirst),
                                              static_cast<std::uint64_t>(mSecond)};
    UTF16String text(kTextLength, u'-');
    for (std::size_t byte = 0; byte < kBytePlaces.size(); ++byte) {
        const std::uint64_t value = halves[byte / 8] >> (56U - 8U * (byte % 8));
        text[kBytePlaces[byte]] = kDigits[value >> 4U & 0xFU];
        text[kBytePlaces[byte] + 1U] = kDigits[value & 0xFU];
    }
    return text;
}

}  // namespace ferrite::utility
