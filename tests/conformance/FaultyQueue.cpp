#include "tests/conformance/FaultyQueue.h"

#include "assetconnector/host/kiln/Message.h"

#include <algorithm>
#include <future>
#include <stdexcept>
#include <utility>

FaultyQueue::Poster::~Poster()
{
    for (const auto& task : tasks)
        if (const TaskRef posted = task.lock())
            posted->lost = true;
}

FaultyQueue::FaultyQueue(QueueFault fault)
    : Stations(Delivery::kByHand), mFault(fault), mThread([this] { RunThread(); })
{
}

FaultyQueue::~FaultyQueue()
{
    {
        const Lock lock(mMutex);
        mEnding = true;
        mChanged.notify_all();
    }
    mThread.join();
}

void FaultyQueue::AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener)
{
    {
        const Lock lock(mMutex);
        mKnown.insert(station.AsUTF8());
    }
    Stations::AddListener(station, listener);
}

void FaultyQueue::PostMessageToUIThread(const ferrite::utility::ImmutableString& station,
                                        const Kiln::Message& message, bool flag)
{
    const bool isUIThread = std::this_thread::get_id() == mThread.get_id();
    if (Has(QueueFault::kLosesUnflagged) && !flag)
        return;
    if (Has(QueueFault::kDeliversAtOnceOnItsThread) && isUIThread) {
        BroadcastMessage(station, message);
        return;
    }
    const bool isForeign = !isUIThread && std::this_thread::get_id() != mMade;
    if (Has(QueueFault::kThrowsOnForeignThreads) && isForeign)
        throw std::logic_error("not on this thread");
    if (Has(QueueFault::kDeliversForeignAtOnce) && isForeign) {
        BroadcastMessage(station, message);
        return;
    }
    const auto task = std::make_shared<Task>();
    task->flag = flag;
    if (Has(QueueFault::kSendsTheOriginal) && !isUIThread) {
        std::packaged_task<void()> send([&] { BroadcastMessage(station, message); });
        const std::future<void> sent = send.get_future();
        task->deliver = [&send] { send(); };
        Push(task);
        sent.wait();
        return;
    }
    task->deliver = message.CreateStationCallback(station);
    if (Has(QueueFault::kQueueOfThePoster)) {
        thread_local Poster poster;
        poster.tasks.push_back(task);
    }
    {
        const Lock lock(mMutex);
        const bool isUnheard = Has(QueueFault::kLosesBehindUnheard) && mKnown.count(station.AsUTF8()) == 0;
        task->lost = std::exchange(mLosesNext, isUnheard);
    }
    Push(task);
}

void FaultyQueue::Push(const TaskRef& task)
{
    const Lock lock(mMutex);
    mTasks.push_back(task);
    mChanged.notify_all();
}

/// Requires that something is posted.
FaultyQueue::TaskRef FaultyQueue::Take()
{
    auto next = mTasks.begin();
    if (Has(QueueFault::kFlaggedFirst)) {
        const auto flagged =
            std::find_if(mTasks.begin(), mTasks.end(), [](const TaskRef& task) { return task->flag; });
        next = flagged == mTasks.end() ? next : flagged;
    }
    TaskRef task = *next;
    mTasks.erase(next);
    return task;
}

void FaultyQueue::RunThread()
{
    Lock lock(mMutex);
    for (;;) {
        mChanged.wait(lock, [this] { return mEnding || !mTasks.empty(); });
        if (mEnding)
            return;
        TaskRef task = Take();
        mRunning = true;
        lock.unlock();
        if (Has(QueueFault::kThreadForEach))
            std::thread([this, &task] { RunTask(*task); }).join();
        else
            RunTask(*task);
        lock.lock();
        if (Has(QueueFault::kKeepsDelivered))
            mKept.push_back(task);
        task.reset();
        mRunning = false;
        mChanged.notify_all();
    }
}

void FaultyQueue::RunTask(const Task& task)
{
    if (task.lost)
        return;
    try {
        task.deliver();
    } catch (...) {
        const Lock lock(mMutex);
        if (Has(QueueFault::kThrowsAwayAfterException))
            mTasks.clear();
    }
}

void FaultyQueue::Wait()
{
    Lock lock(mMutex);
    mChanged.wait(lock, [this] { return mTasks.empty() && !mRunning; });
}

void FaultyQueue::DropPosted()
{
    Lock lock(mMutex);
    mTasks.clear();
    mChanged.wait(lock, [this] { return !mRunning; });
    mKept.clear();
}
