#include "protocol/check/NumberRules.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/host/ferrite/DecimalNumbers.h"
#include "assetconnector/host/ferrite/ReservedCharacters.h"
#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>
#include <limits>

namespace Protocol::Checking {
namespace {

using ferrite::utility::UTF8to16;

constexpr std::string_view kDigits = "0123456789";

/// The forms that are numbers, and how the host reads them.
struct NumberForm
{
    std::string_view name;
    std::int64_t (*read)(const std::string& value);
    bool takesSign;
};
constexpr NumberForm kNumberForms[] = {
    {"integer", [](const std::string& value) -> std::int64_t { return OrderOf(value); }, true},
    {"order", [](const std::string& value) -> std::int64_t { return OrderOf(value); }, true},
    {"unsigned",
     [](const std::string& value) -> std::int64_t { return ferrite::utility::ParseUInt32(UTF8to16(value)); },
     false},
    {"time", TimeOf, true},
};

/// A number at the start of a text.
struct Number
{
    std::string digits;  ///< Empty: there is none.
    bool hasSign = false;
    std::string rest;
};

Number NumberAtStart(const std::string& value)
{
    Number number;
    std::size_t at = std::min(value.find_first_not_of(" \t\n\v\f\r"), value.size());
    number.hasSign = value.find_first_of("+-", at) == at;
    at += number.hasSign ? 1 : 0;
    const std::size_t end = std::min(value.find_first_not_of(kDigits, at), value.size());
    number.digits = value.substr(at, end - at);
    number.rest = value.substr(end);
    return number;
}

/// \return How much of the text is a number with an optional point.
std::size_t LengthOfDecimal(std::string_view text)
{
    std::size_t length = std::min(text.find_first_not_of(kDigits), text.size());
    if (length != 0 && text.substr(length, 1) == ".")
        length = std::min(text.find_first_not_of(kDigits, length + 1), text.size());
    return length;
}

/// \return How much of the text is a rate as it should be written.
std::size_t LengthOfRate(std::string_view text)
{
    if (text.substr(0, 1) != "f")
        return 0;
    const std::size_t length = 1 + LengthOfDecimal(text.substr(1));
    const std::size_t denominator =
        text.substr(length, 1) == "s" ? LengthOfDecimal(text.substr(length + 1)) : 0;
    return denominator == 0 ? length : length + 1 + denominator;
}

/// \return Ticks per frame, as the decoder reads the text.
std::int64_t TicksPerFrame(const std::string& value)
{
    UTF16String text;
    ferrite::xml::utils::EncodeReservedCharacters(UTF8to16(value), text);
    std::replace(text.begin(), text.end(), u'\r', u' ');
    AC::ACMessage message;
    AC::ACMessageDecoder::DecodeXMLString(
        u"<a><mediaPropertyInfo><frameRate>" + text + u"</frameRate></mediaPropertyInfo></a>", message);
    return message.mediaPropertyInfo.frameRate.ticksPerFrame;
}

}  // namespace

std::optional<Remark> JudgeNumber(const Quoting& quoting, std::string_view form, const std::string& what,
                                  const std::string& value)
{
    const auto* const row = std::find_if(std::begin(kNumberForms), std::end(kNumberForms),
                                         [form](const NumberForm& each) { return each.name == form; });
    if (row == std::end(kNumberForms))
        return std::nullopt;
    const Number number = NumberAtStart(value);
    const std::string advice =
        row->takesSign ? "write a whole number" : "write a whole number without a sign";
    if (number.digits.empty())
        return Remark{Kind::kNumberIsZero, what + ", which reads as 0", advice};
    const std::int64_t read = row->read(value);
    if (read == 0 && number.digits.find_first_not_of('0') != std::string::npos)
        return Remark{Kind::kNumberIsZero,
                      what + ", which reads as 0: it " +
                          (number.hasSign && !row->takesSign ? "has a sign" : "is too large"),
                      number.hasSign && !row->takesSign ? advice : "write a smaller number"};
    if (IsBlank(number.rest))
        return std::nullopt;
    return Remark{Kind::kNumberCut,
                  what + ", of which " + std::to_string(read) + " is read and " + quoting.Value(number.rest) +
                      " is lost",
                  advice};
}

std::optional<Remark> JudgeRate(const Quoting& quoting, const std::string& what, const std::string& value)
{
    const std::string trimmed = Trimmed(value);
    const std::string advice = "write such as f25 or f30000s1001";
    const std::int64_t ticks = TicksPerFrame(value);
    if (ticks == std::numeric_limits<std::int64_t>::max() || ticks < 0)
        return Remark{Kind::kRateIsNone, what + ", which is no rate: no time at it can be used", advice};
    if (ticks <= 1 && trimmed != "f" + std::to_string(tempora::kTicksPerSecond))
        return Remark{Kind::kRateIsNone, what + ", which reads as no rate: a frame is then one tick", advice};
    const std::size_t length = LengthOfRate(trimmed);
    if (length == trimmed.size())
        return std::nullopt;
    return Remark{Kind::kNumberCut, what + ", of which " + quoting.Value(trimmed.substr(length)) + " is lost",
                  advice};
}

std::int64_t TimeOf(const std::string& value)
{
    return ferrite::utility::ParseInt64(UTF8to16(value));
}

std::int32_t OrderOf(const std::string& value)
{
    return ferrite::utility::ParseInt32(UTF8to16(value));
}

}  // namespace Protocol::Checking
