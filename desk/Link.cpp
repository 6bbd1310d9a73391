#include "desk/Link.h"

#include <utility>

namespace Desk {

using Lock = std::lock_guard<std::mutex>;

void Link::Send(Frame frame)
{
    const Lock lock(mMutex);
    if (mClosing)
        return;
    if (mFrames.size() >= mLimits.mostFrames || mBytes >= mLimits.mostBytes) {
        CloseLocked(Closing::kTooSlow, "the page does not read what it is told: too much waits for it");
        return;
    }
    mBytes += frame->size();
    mFrames.push_back(std::move(frame));
    WakeLocked();
}

void Link::Close(std::uint16_t code, std::string reason)
{
    const Lock lock(mMutex);
    CloseLocked(code, std::move(reason));
}

void Link::ReadOn()
{
    const Lock lock(mMutex);
    mMayReadOn = true;
    WakeLocked();
}

bool Link::IsClosed() const
{
    const Lock lock(mMutex);
    return mClosing.has_value();
}

void Link::Connect(boost::function<void()> wake)
{
    const Lock lock(mMutex);
    mWake = std::move(wake);
    WakeLocked();
}

void Link::Disconnect()
{
    const Lock lock(mMutex);
    mWake.clear();
    CloseLocked(Closing::kNormal, {});
}

Frame Link::TakeFrame()
{
    const Lock lock(mMutex);
    if (mFrames.empty())
        return {};
    Frame frame = std::move(mFrames.front());
    mFrames.pop_front();
    mBytes -= frame->size();
    return frame;
}

std::optional<Closing> Link::GetClosing() const
{
    const Lock lock(mMutex);
    return mClosing;
}

bool Link::TakeReadOn()
{
    const Lock lock(mMutex);
    return std::exchange(mMayReadOn, false);
}

void Link::CloseLocked(std::uint16_t code, std::string reason)
{
    if (mClosing)
        return;
    mClosing = Closing{code, std::move(reason)};
    mFrames.clear();
    mBytes = 0;
    WakeLocked();
}

void Link::WakeLocked() const
{
    if (mWake)
        mWake();
}

}  // namespace Desk
