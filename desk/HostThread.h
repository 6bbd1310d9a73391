#pragma once

#include <boost/function.hpp>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace Desk {

/// Runs tasks later, one after the other.
class Timer
{
public:
    using Task = boost::function<void()>;

    virtual ~Timer() = default;
    virtual void PostAfter(std::chrono::milliseconds delay, Task task) = 0;

    /// The time that tasks wait for.
    virtual std::chrono::steady_clock::time_point Now() const { return std::chrono::steady_clock::now(); }
};

/// A thread that runs tasks one after the other, in the order in which they were posted.
class HostThread final : public Timer
{
public:
    /// \param problem Called on the thread with one line on what a posted task threw. Must not throw.
    /// \param afterEach Called on the thread after each task; what it throws is a problem, too.
    HostThread(boost::function<void(const std::string&)> problem, Task afterEach);

    /// Runs what is posted, then ends the thread. Not on that thread.
    ~HostThread() override;

    HostThread(const HostThread&) = delete;
    HostThread& operator=(const HostThread&) = delete;

    /// Any thread, from inside a task too.
    void Post(Task task);

    /// Posts the task when the time has passed; never, when the thread is ended before. Any thread.
    void PostAfter(std::chrono::milliseconds delay, Task task) override;

    /// Forgets what PostAfter was told and is not due. Any thread.
    void DropLater();

    /// Posts the task and waits for it. Not on the thread.
    /// \throws What the task throws.
    void Run(Task task);

private:
    using Clock = std::chrono::steady_clock;

    void Loop();
    /// Moves what is due. \return When the next one is.
    Clock::time_point TakeDue();
    void RunGuarded(const Task& task) const;

    const boost::function<void(const std::string&)> mProblem;
    const Task mAfterEach;
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Task> mTasks;
    std::multimap<Clock::time_point, Task> mLater;
    bool mIsEnding = false;
    std::thread mThread;  ///< The last member: it uses all the others.
};

}  // namespace Desk
