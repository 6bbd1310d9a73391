#include "assetconnector/host/tempora/Time.h"

#include <numeric>

namespace tempora {

std::int64_t TickTime::ToFrame64(FrameRate rate) const noexcept
{
    // The most negative count, the only one that division by -1 could not carry, is the invalid time.
    if (*this == kTime_Invalid)
        return 0;
    return rate == kFrameRate_Zero ? ticks : ticks / rate.ticksPerFrame;
}

FrameRatio FrameRateToRatio(FrameRate rate) noexcept
{
    if (rate == kFrameRate_Zero)
        return {};
    // Unsigned: the most negative rate has no positive counterpart.
    const auto bits = static_cast<std::uint64_t>(rate.ticksPerFrame);
    const std::uint64_t magnitude = rate.ticksPerFrame < 0 ? 0 - bits : bits;
    constexpr auto kTicks = static_cast<std::uint64_t>(kTicksPerSecond);
    const std::uint64_t divisor = std::gcd(kTicks, magnitude);
    const auto numerator = static_cast<std::int64_t>(kTicks / divisor);
    return {rate.ticksPerFrame < 0 ? -numerator : numerator, static_cast<std::int64_t>(magnitude / divisor)};
}

}  // namespace tempora
