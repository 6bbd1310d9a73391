#pragma once

#include "assetconnector/codec/Vocabulary.h"
#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ridge/AssetMediaType.h"
#include "assetconnector/host/tempora/Time.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

/// How values are spelled in texts. All of them are pure; what is not noexcept throws std::bad_alloc alone.
namespace AC {

/// \return Whether both are equal once A to Z are folded to a to z; nothing else is folded.
bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept;

/// \return 1 to 4 for the exact clip type names, 0 for anything else.
Ridge::AssetMediaType ClipTypeFromName(std::u16string_view name) noexcept;

/// \return "unKnown" for a value without a name.
Vocabulary::Name ClipTypeName(Ridge::AssetMediaType type) noexcept;

/// Reads "f" NUMERATOR and, optionally, "s" DENOMINATOR, in frames per second.
/// \return kFrameRate_Zero without an "f", with an "s" in front of it or for 0/0; the largest rate for no
///         frames per second.
tempora::FrameRate ParseFrameRate(std::u16string_view text);

/// \return The text form of a rate; empty for kFrameRate_Zero.
UTF16String FormatFrameRate(tempora::FrameRate rate);

/// The text of the rate at which one frame is one tick, for elements whose times are raw ticks.
constexpr Vocabulary::Name kTickRate = u"f254016000000";

/// The text of a number, without the heap.
class Decimal
{
public:
    explicit Decimal(std::int64_t value) noexcept;

    /// \return Terminated by zero; of this object.
    const char16_t* Text() const noexcept { return mUnits.data() + mBegin; }

private:
    // One digit more than always fit, a sign, a zero.
    std::array<char16_t, std::numeric_limits<std::int64_t>::digits10 + 3> mUnits{};
    std::size_t mBegin = mUnits.size() - 1;
};

/// \return The GUID of the text; zero for an empty or malformed one.
inline ferrite::utility::Guid GuidOf(const UTF16String& text) noexcept
{
    return ferrite::utility::Guid::StringToGUID(text);
}

}  // namespace AC
