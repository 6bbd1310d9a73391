#pragma once

#include "reference_host/Stations.h"

#include <atomic>
#include <list>
#include <memory>
#include <set>
#include <string>

/// One fault in how posted messages are delivered.
enum class QueueFault
{
    kNone,
    kLosesUnflagged,
    kSendsTheOriginal,
    kDeliversAtOnceOnItsThread,
    kFlaggedFirst,
    kThreadForEach,
    kQueueOfThePoster,
    kKeepsDelivered,
    kThrowsAwayAfterException,
    kLosesBehindUnheard,
    kThrowsOnForeignThreads,
    kDeliversForeignAtOnce,
};

/// Stations with a user-interface thread that has one fault.
class FaultyQueue : public ReferenceHost::Stations
{
public:
    explicit FaultyQueue(QueueFault fault);
    ~FaultyQueue() override;
    FaultyQueue(const FaultyQueue&) = delete;
    FaultyQueue& operator=(const FaultyQueue&) = delete;

    void AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener) override;
    void PostMessageToUIThread(const ferrite::utility::ImmutableString& station, const Kiln::Message& message,
                               bool flag) override;

    /// Waits until nothing is posted any more.
    void Wait();
    void DropPosted();

private:
    using Lock = std::unique_lock<std::mutex>;

    struct Task
    {
        boost::function<void()> deliver;
        bool flag = true;
        std::atomic<bool> lost{false};
    };
    using TaskRef = std::shared_ptr<Task>;

    /// Loses what a thread posted when the thread ends.
    struct Poster
    {
        std::list<std::weak_ptr<Task>> tasks;
        ~Poster();
    };

    bool Has(QueueFault fault) const { return mFault == fault; }
    void Push(const TaskRef& task);
    TaskRef Take();
    void RunThread();
    void RunTask(const Task& task);

    const QueueFault mFault;
    const std::thread::id mMade = std::this_thread::get_id();
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::list<TaskRef> mTasks;
    std::list<TaskRef> mKept;
    std::set<std::string> mKnown;
    bool mLosesNext = false;
    bool mRunning = false;
    bool mEnding = false;
    std::thread mThread;  ///< The last member: it uses all the others.
};

template <QueueFault fault>
struct QueueThat : FaultyQueue
{
    QueueThat() : FaultyQueue(fault) {}
};
