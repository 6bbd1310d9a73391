#pragma once

#include "desk/HostThread.h"

#include <chrono>
#include <memory>
#include <optional>

namespace Desk {

/// When the next line of a session is due. One thread, the timer's.
class Pace
{
public:
    struct Settings
    {
        double speed = 1;         ///< How many times as fast.
        bool isStepping = false;  ///< Nothing is ever due.
    };

    /// \param timer Outlives this object. \param due Called once for each wait that comes to its end; what it
    /// throws reaches the timer.
    Pace(Timer& timer, const Settings& settings, Timer::Task due);

    /// Waits, instead of whatever it waits for, so long in the session's own time, beginning now, or when the
    /// line was due whose `due` this is called in.
    void Await(std::chrono::microseconds distance);

    /// Waits for nothing.
    void Rest();

    /// Changes the pace, of the wait under way, too. \param speed Brought within bounds.
    void Set(std::optional<double> speed, std::optional<bool> isStepping);

    const Settings& Get() const noexcept { return mSettings; }

private:
    using Clock = std::chrono::steady_clock;
    using Distance = std::chrono::duration<double, std::micro>;

    Clock::duration Remaining() const;
    void Start();
    void OnTime();

    Timer& mTimer;
    Settings mSettings;
    const Timer::Task mDue;
    std::optional<Distance> mDistance;  ///< None: it waits for nothing.
    Clock::time_point mSince;           ///< When `mDistance` began.
    Clock::duration mLate{};            ///< How late the line was that is being played.
    std::shared_ptr<char> mWait;        ///< The timer's tasks of other waits do nothing.
};

}  // namespace Desk
