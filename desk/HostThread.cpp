#include "desk/HostThread.h"

#include <exception>
#include <future>
#include <utility>

namespace Desk {

HostThread::HostThread(boost::function<void(const std::string&)> problem, Task afterEach)
    : mProblem(std::move(problem)), mAfterEach(std::move(afterEach)), mThread([this] { Loop(); })
{
}

HostThread::~HostThread()
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mIsEnding = true;
    }
    mChanged.notify_one();
    mThread.join();
}

void HostThread::Post(Task task)
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mTasks.push_back(std::move(task));
    }
    mChanged.notify_one();
}

void HostThread::PostAfter(std::chrono::milliseconds delay, Task task)
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mLater.emplace(Clock::now() + delay, std::move(task));
    }
    mChanged.notify_one();
}

void HostThread::DropLater()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mLater.clear();
}

void HostThread::Run(Task task)
{
    std::promise<void> done;
    Post([&task, &done] {
        try {
            task();
            done.set_value();
        } catch (...) {
            done.set_exception(std::current_exception());
        }
    });
    done.get_future().get();
}

void HostThread::Loop()
{
    for (;;) {
        Task task;
        {
            std::unique_lock<std::mutex> lock(mMutex);
            for (Clock::time_point next = TakeDue(); !mIsEnding && mTasks.empty(); next = TakeDue())
                mLater.empty() ? mChanged.wait(lock) : void(mChanged.wait_until(lock, next));
            if (mTasks.empty())
                return;
            task = std::move(mTasks.front());
            mTasks.pop_front();
        }
        RunGuarded(task);
        task.clear();
        RunGuarded(mAfterEach);
    }
}

HostThread::Clock::time_point HostThread::TakeDue()
{
    const Clock::time_point now = Clock::now();
    while (!mLater.empty() && mLater.begin()->first <= now) {
        mTasks.push_back(std::move(mLater.begin()->second));
        mLater.erase(mLater.begin());
    }
    return mLater.empty() ? now : mLater.begin()->first;
}

void HostThread::RunGuarded(const Task& task) const
{
    try {
        task();
    } catch (const std::exception& exception) {
        mProblem(exception.what());
    } catch (...) {
        mProblem("an exception of another kind; perhaps there is not enough memory");
    }
}

}  // namespace Desk
