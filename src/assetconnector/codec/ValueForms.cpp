#include "assetconnector/codec/ValueForms.h"

#include "assetconnector/host/ferrite/DecimalNumbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace AC {
namespace {

using Ridge::AssetMediaType;

struct ClipType
{
    AssetMediaType type;
    Vocabulary::Name name;
};

constexpr std::array<ClipType, 4> kClipTypes{{{AssetMediaType::kMasterClip, u"masterClip"},
                                              {AssetMediaType::kSubClip, u"subClip"},
                                              {AssetMediaType::kRoughCut, u"roughCut"},
                                              {AssetMediaType::kRoughCutSubClip, u"rcSubClip"}}};

constexpr char16_t Folded(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

/// Truncates toward zero; what 64 bits cannot hold becomes the nearest value that they can.
std::int64_t ToInteger(double value)
{
    constexpr double kBeyond = 9223372036854775808.0;
    if (value >= kBeyond)
        return std::numeric_limits<std::int64_t>::max();
    if (value < -kBeyond)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

}  // namespace

bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return Folded(x) == Folded(y); });
}

AssetMediaType ClipTypeFromName(std::u16string_view name) noexcept
{
    for (const ClipType& row : kClipTypes)
        if (row.name.View() == name)
            return row.type;
    return AssetMediaType::kUnknown;
}

Vocabulary::Name ClipTypeName(AssetMediaType type) noexcept
{
    for (const ClipType& row : kClipTypes)
        if (row.type == type)
            return row.name;
    return u"unKnown";
}

tempora::FrameRate ParseFrameRate(std::u16string_view text)
{
    const std::size_t f = text.find(u'f');
    const std::size_t s = text.find(u's');
    if (f == std::u16string_view::npos || s < f)
        return tempora::kFrameRate_Zero;
    double framesPerSecond = ferrite::utility::ParseDouble(text.substr(f + 1, s - f - 1));
    if (s != std::u16string_view::npos)
        framesPerSecond /= ferrite::utility::ParseDouble(text.substr(s + 1));
    if (std::isnan(framesPerSecond))
        return tempora::kFrameRate_Zero;
    if (framesPerSecond == 0.0)
        return {std::numeric_limits<std::int64_t>::max()};
    return {ToInteger(static_cast<double>(tempora::kTicksPerSecond) / framesPerSecond)};
}

UTF16String FormatFrameRate(tempora::FrameRate rate)
{
    if (rate == tempora::kFrameRate_Zero)
        return {};
    const tempora::FrameRatio ratio = tempora::FrameRateToRatio(rate);
    UTF16String text = u"f";
    text += Decimal(ratio.numerator).Text();
    if (ratio.denominator != 1)
        text.append(u"s").append(Decimal(ratio.denominator).Text());
    return text;
}

Decimal::Decimal(std::int64_t value) noexcept
{
    auto rest = static_cast<std::uint64_t>(value);
    if (value < 0)
        rest = 0 - rest;
    do {
        mUnits[--mBegin] = static_cast<char16_t>(u'0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (value < 0)
        mUnits[--mBegin] = u'-';
}

}  // namespace AC
