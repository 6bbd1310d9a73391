#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace Desk {

/// How much may come: a bucket of so many frames, which fills again. A long frame counts as several, one that
/// may not pass as none. Not locked.
class RateLimit
{
public:
    using Clock = std::chrono::steady_clock;

    struct Limits
    {
        double burst = 4096;  ///< A page that comes again may raise 1,024 requests at once.
        double perSecond = 1024;
    };

    RateLimit(const Limits& limits, Clock::time_point now)
        : mLimits(limits), mLeft(limits.burst), mFilled(now)
    {
    }

    /// \param bytes The length of a frame. \return Whether it may pass.
    bool Take(std::size_t bytes, Clock::time_point now)
    {
        const double seconds = std::chrono::duration<double>(now - mFilled).count();
        mFilled = now;
        mLeft = std::min(mLimits.burst, mLeft + seconds * mLimits.perSecond);
        const double cost = 1 + static_cast<double>(bytes) / kBytesOfOne;
        if (mLeft < cost)
            return false;
        mLeft -= cost;
        return true;
    }

private:
    static constexpr double kBytesOfOne = 16384;

    Limits mLimits;
    double mLeft;
    Clock::time_point mFilled;
};

}  // namespace Desk
