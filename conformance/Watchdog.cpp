#include "conformance/Watchdog.h"

#include <utility>

namespace Conformance {

Watchdog::Watchdog(std::chrono::milliseconds limit, boost::function<void()> onHang)
    : mLimit(limit), mOnHang(std::move(onHang)), mThread([this] { Watch(); })
{
}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mEnded = true;
        mChanged.notify_all();
    }
    mThread.join();
}

void Watchdog::Watch()
{
    std::unique_lock<std::mutex> lock(mMutex);
    if (mChanged.wait_for(lock, mLimit, [this] { return mEnded; }))
        return;
    lock.unlock();
    mOnHang();
}

}  // namespace Conformance
