#include "assetconnector/host/ferrite/DecimalNumbers.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string>
#include <system_error>
#include <type_traits>

namespace ferrite::utility {
namespace {

std::u16string_view WithoutLeadingSpace(std::u16string_view text)
{
    std::size_t at = 0;
    while (at < text.size() && (text[at] == u' ' || (text[at] >= u'\t' && text[at] <= u'\r')))
        ++at;
    return text.substr(at);
}

constexpr bool IsDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

std::size_t DigitsAt(std::u16string_view text, std::size_t at)
{
    const std::size_t start = at;
    while (at < text.size() && IsDigit(text[at]))
        ++at;
    return at - start;
}

template <class Integer>
Integer ParseInteger(std::u16string_view text) noexcept
{
    text = WithoutLeadingSpace(text);
    bool negative = false;
    if (std::is_signed_v<Integer> && !text.empty() && (text[0] == u'+' || text[0] == u'-')) {
        negative = text[0] == u'-';
        text.remove_prefix(1);
    }
    constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());
    const std::uint64_t limit = kLargest + (negative ? 1U : 0U);
    std::uint64_t value = 0;
    for (const char16_t unit : text) {
        if (!IsDigit(unit))
            break;
        const auto digit = static_cast<std::uint64_t>(unit - u'0');
        if (value > (limit - digit) / 10)
            return 0;
        value = value * 10 + digit;
    }
    return static_cast<Integer>(negative ? 0 - value : value);
}

/// The characters of the number at the start of text; empty when there is none.
std::string DoubleAt(std::u16string_view text)
{
    std::size_t end = !text.empty() && text[0] == u'-' ? 1 : 0;
    const std::size_t whole = DigitsAt(text, end);
    end += whole;
    if (end < text.size() && text[end] == u'.') {
        const std::size_t fraction = DigitsAt(text, end + 1);
        if (whole + fraction > 0)
            end += 1 + fraction;
        if (whole + fraction == 0)
            return {};
    } else if (whole == 0) {
        return {};
    }
    if (end < text.size() && (text[end] == u'e' || text[end] == u'E')) {
        const bool sign = end + 1 < text.size() && (text[end + 1] == u'+' || text[end + 1] == u'-');
        const std::size_t digits = DigitsAt(text, end + 1 + (sign ? 1 : 0));
        if (digits > 0)
            end += 1 + (sign ? 1 : 0) + digits;
    }
    std::string characters(end, '\0');
    std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), characters.begin(),
                   [](char16_t unit) { return static_cast<char>(unit); });
    return characters;
}

/// \return Whether a number beyond the range of double lies towards zero: the power of ten of its first
/// significant digit tells. The exponent is cut far outside of that range.
bool LiesTowardsZero(const std::string& number)
{
    const std::size_t exponentAt = std::min(number.find_first_of("eE"), number.size());
    const auto pointAt = static_cast<std::int64_t>(std::min(number.find('.'), exponentAt));
    const auto first = static_cast<std::int64_t>(number.find_first_of("123456789"));
    std::int64_t exponent = 0;
    for (std::size_t at = exponentAt; at < number.size(); ++at)
        if (IsDigit(static_cast<unsigned char>(number[at])))
            exponent = std::min<std::int64_t>(exponent * 10 + (number[at] - '0'), 1'000'000'000'000);
    if (number.find('-', exponentAt) != std::string::npos)
        exponent = -exponent;
    return (first < pointAt ? pointAt - first - 1 : pointAt - first) + exponent < 0;
}

}  // namespace

std::int32_t ParseInt32(std::u16string_view text) noexcept
{
    return ParseInteger<std::int32_t>(text);
}

std::int64_t ParseInt64(std::u16string_view text) noexcept
{
    return ParseInteger<std::int64_t>(text);
}

std::uint32_t ParseUInt32(std::u16string_view text) noexcept
{
    return ParseInteger<std::uint32_t>(text);
}

double ParseDouble(std::u16string_view text)
{
    text = WithoutLeadingSpace(text);
    if (!text.empty() && text[0] == u'+') {
        text.remove_prefix(1);
        if (!text.empty() && text[0] == u'-')
            return 0.0;
    }
    const std::string number = DoubleAt(text);
    if (number.empty())
        return 0.0;
    double value = 0.0;
    if (std::from_chars(number.data(), number.data() + number.size(), value).ec !=
        std::errc::result_out_of_range)
        return value;
    const double magnitude = LiesTowardsZero(number) ? 0.0 : std::numeric_limits<double>::infinity();
    return number[0] == '-' ? -magnitude : magnitude;
}

}  // namespace ferrite::utility
