#pragma once

#include "desk/Link.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>

namespace Desk {

/// The last notifications, numbered from 1 on, for pages that come back. Bounded by count and bytes.
class NotificationLog
{
public:
    struct Limits
    {
        std::size_t mostFrames = 1024;
        std::size_t mostBytes = std::size_t{8} << 20;
    };

    explicit NotificationLog(const Limits& limits) : mLimits(limits) {}

    /// \return The number of the last notification; 0 before the first one.
    std::uint64_t Last() const noexcept { return mLast; }

    /// \param frame Carries the number Last() + 1.
    void Add(Frame frame)
    {
        ++mLast;
        mBytes += frame->size();
        mFrames.push_back(std::move(frame));
        while (mFrames.size() > mLimits.mostFrames || mBytes > mLimits.mostBytes) {
            mBytes -= mFrames.front()->size();
            mFrames.pop_front();
        }
    }

    /// \return Whether everything behind this number is there.
    bool HasAllBehind(std::uint64_t number) const noexcept
    {
        return number <= mLast && mLast - number <= mFrames.size();
    }

    /// Calls `use(frame)` with each notification behind this number, in order. HasAllBehind(number) holds.
    template <class Use>
    void ForEachBehind(std::uint64_t number, Use use) const
    {
        for (std::size_t at = mFrames.size() - static_cast<std::size_t>(mLast - number); at < mFrames.size();
             ++at)
            use(mFrames[at]);
    }

private:
    const Limits mLimits;
    std::deque<Frame> mFrames;
    std::size_t mBytes = 0;
    std::uint64_t mLast = 0;
};

}  // namespace Desk
