#pragma once

#include <boost/function.hpp>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace Conformance {

/// Calls a function, on a thread of its own, when what it watches takes too long.
class Watchdog
{
public:
    /// \param onHang Called once.
    Watchdog(std::chrono::milliseconds limit, boost::function<void()> onHang);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    void Watch();

    const std::chrono::milliseconds mLimit;
    const boost::function<void()> mOnHang;
    std::mutex mMutex;
    std::condition_variable mChanged;
    bool mEnded = false;
    std::thread mThread;  ///< The last member: it uses all the others.
};

}  // namespace Conformance
