#pragma once

#include <boost/function.hpp>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace Desk {

/// A thread that runs tasks one after the other, in the order in which they were posted.
class HostThread
{
public:
    using Task = boost::function<void()>;

    /// \param problem Called on the thread with one line on what a posted task threw. Must not throw.
    /// \param afterEach Called on the thread after each task; what it throws is a problem, too.
    HostThread(boost::function<void(const std::string&)> problem, Task afterEach);

    /// Runs what is posted, then ends the thread. Not on that thread.
    ~HostThread();

    HostThread(const HostThread&) = delete;
    HostThread& operator=(const HostThread&) = delete;

    /// Any thread, from inside a task too.
    void Post(Task task);

    /// Posts the task and waits for it. Not on the thread.
    /// \throws What the task throws.
    void Run(Task task);

private:
    void Loop();
    void RunGuarded(const Task& task) const;

    const boost::function<void(const std::string&)> mProblem;
    const Task mAfterEach;
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Task> mTasks;
    bool mIsEnding = false;
    std::thread mThread;  ///< The last member: it uses all the others.
};

}  // namespace Desk
