#include "assetconnector/host/ferrite/Guid.h"

#include "assetconnector/host/Host.h"

#include <array>
#include <cstddef>

namespace ferrite::utility {
namespace {

/// Where the two digits of each byte begin.
constexpr std::array<std::size_t, 16> kBytePlaces{0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};
constexpr std::array<std::size_t, 4> kHyphenPlaces{8, 13, 18, 23};
constexpr std::u16string_view kDigits = u"0123456789abcdef";

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
    for (const std::size_t hyphen : kHyphenPlaces)
        if (text[hyphen] != u'-')
            return {};
    std::array<std::uint64_t, 2> halves{};
    for (std::size_t byte = 0; byte < kBytePlaces.size(); ++byte) {
        const int high = HexDigit(text[kBytePlaces[byte]]);
        const int low = HexDigit(text[kBytePlaces[byte] + 1]);
        if (high < 0 || low < 0)
            return {};
        halves[byte / 8] = halves[byte / 8] << 8U | static_cast<std::uint64_t>(16 * high + low);
    }
    return {halves[0], halves[1]};
}

UTF16String Guid::AsString() const
{
    return {AsArray().data(), kTextLength};
}

std::array<char16_t, Guid::kTextLength + 1> Guid::AsArray() const noexcept
{
    const std::array<std::uint64_t, 2> halves{static_cast<std::uint64_t>(mFirst),
                                              static_cast<std::uint64_t>(mSecond)};
    std::array<char16_t, kTextLength + 1> text{};
    for (std::size_t byte = 0; byte < kBytePlaces.size(); ++byte) {
        const std::uint64_t value = halves[byte / 8] >> (56U - 8U * (byte % 8));
        text[kBytePlaces[byte]] = kDigits[value >> 4U & 0xFU];
        text[kBytePlaces[byte] + 1] = kDigits[value & 0xFU];
    }
    for (const std::size_t hyphen : kHyphenPlaces)
        text[hyphen] = u'-';
    return text;
}

}  // namespace ferrite::utility
