#pragma once

#include "desk/Faults.h"
#include "desk/HostThread.h"

#include <boost/function.hpp>

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

namespace Desk {

/// One direction between the bridge and a page, with faults on the way. Used on the host's thread.
class Disturbance
{
public:
    /// Lets something pass. \param faults Null: as it is; else garbled by these.
    using Pass = boost::function<void(Faults* faults)>;

    /// How long something is held.
    static constexpr std::chrono::milliseconds kHeld{400};

    /// \param timer Outlives this object. \param disconnect Ends the page's connection. \param mark Told of
    /// each fault, before it happens, with a text such as "fault: dropped".
    Disturbance(Faults::Settings settings, Timer& timer, boost::function<void()> disconnect,
                boost::function<void(const std::string&)> mark)
        : mFaults(std::move(settings)),
          mTimer(timer),
          mDisconnect(std::move(disconnect)),
          mMark(std::move(mark))
    {
    }

    /// \throws What passing throws; the last of several.
    void Take(const Pass& pass);

    /// Lets pass what is held. \throws As Take.
    void Flush();

    const Faults::Settings& GetSettings() const noexcept { return mFaults.GetSettings(); }

    /// \return How many faults have happened.
    std::uint64_t Count() const noexcept { return mCount; }

private:
    void Happen(Fault fault, const Pass& pass);
    void Hold(const Pass& pass, bool untilNext);

    Faults mFaults;
    Timer& mTimer;
    const boost::function<void()> mDisconnect;
    const boost::function<void(const std::string&)> mMark;
    std::deque<Pass> mHeld;
    bool mIsUntilNext = false;    ///< What is held comes behind the next one.
    std::shared_ptr<char> mHold;  ///< The timer's tasks of earlier holds do nothing.
    std::uint64_t mCount = 0;
};

}  // namespace Desk
