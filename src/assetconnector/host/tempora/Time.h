#pragma once

#include "assetconnector/host/Export.h"

#include <cstdint>
#include <limits>

/// The host's media times and frame rates. Plain values; every operation is total: results keep the low
/// 64 bits, nothing traps.
namespace tempora {

constexpr std::int64_t kTicksPerSecond = 254016000000;

/// Ticks per frame; 25 frames per second are 10160640000.
struct FrameRate
{
    std::int64_t ticksPerFrame = 0;

    friend constexpr bool operator==(FrameRate a, FrameRate b) noexcept
    {
        return a.ticksPerFrame == b.ticksPerFrame;
    }
    friend constexpr bool operator!=(FrameRate a, FrameRate b) noexcept { return !(a == b); }
};

/// Marks a missing rate.
constexpr FrameRate kFrameRate_Zero{};

/// A count of ticks; the construction value is kTime_Invalid.
struct TickTime
{
    std::int64_t ticks = (std::numeric_limits<std::int64_t>::min)();  // "min" may be a macro

    /// \return The frames at the given rate, truncated toward zero; at the zero rate the ticks; 0 for an
    ///         invalid time.
    AC_API std::int64_t ToFrame64(FrameRate rate) const noexcept;

    friend constexpr bool operator==(TickTime a, TickTime b) noexcept { return a.ticks == b.ticks; }
    friend constexpr bool operator!=(TickTime a, TickTime b) noexcept { return !(a == b); }

    friend constexpr TickTime operator-(TickTime a, TickTime b) noexcept
    {
        return {static_cast<std::int64_t>(static_cast<std::uint64_t>(a.ticks) -
                                          static_cast<std::uint64_t>(b.ticks))};
    }
};

/// Marks a missing time.
constexpr TickTime kTime_Invalid{};

/// \return The time of so many frames.
constexpr TickTime TimeOfFrames(std::int64_t frames, FrameRate rate) noexcept
{
    return {static_cast<std::int64_t>(static_cast<std::uint64_t>(frames) *
                                      static_cast<std::uint64_t>(rate.ticksPerFrame))};
}

/// Frames per second.
struct FrameRatio
{
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
};

/// \return kTicksPerSecond over the rate in lowest terms, the sign in the numerator; 0/1 for the zero rate.
AC_API FrameRatio FrameRateToRatio(FrameRate rate) noexcept;

}  // namespace tempora
