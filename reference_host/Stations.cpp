#include "reference_host/Stations.h"

#include "assetconnector/host/kiln/Message.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace ReferenceHost {
namespace {

/// Lets a lock go while foreign code runs; takes it again for the last step, however that code ends.
template <class LastStep>
class Unlocked
{
public:
    Unlocked(std::unique_lock<std::mutex>& lock, LastStep lastStep) : mLock(lock), mLastStep(lastStep)
    {
        mLock.unlock();
    }
    ~Unlocked()
    {
        mLock.lock();
        mLastStep();
    }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;

private:
    std::unique_lock<std::mutex>& mLock;
    LastStep mLastStep;
};

}  // namespace

Stations::Stations(Delivery delivery) : mDelivery(delivery)
{
    if (mDelivery == Delivery::kOwnThread)
        mThread = std::thread([this] { RunUserInterfaceThread(); });
}

Stations::~Stations()
{
    {
        const Lock lock(mMutex);
        mEnding = true;
        mChanged.notify_all();
    }
    if (mThread.joinable())
        mThread.join();
    DropPosted();
}

void Stations::AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener)
{
    const Lock lock(mMutex);
    mSubscriptions.emplace(SubscriptionKey(station, mNextSubscription), &listener);
    ++mNextSubscription;
}

void Stations::EndSubscriptions(Kiln::Listener& listener) noexcept
{
    Lock lock(mMutex);
    for (auto subscription = mSubscriptions.begin(); subscription != mSubscriptions.end();)
        subscription =
            subscription->second == &listener ? mSubscriptions.erase(subscription) : std::next(subscription);
    mChanged.wait(lock, [this, &listener, self = std::this_thread::get_id()] {
        return std::none_of(mUnderWay.begin(), mUnderWay.end(),
                            [&listener, self](const DeliveryUnderWay& delivery) {
                                return delivery.listener == &listener && delivery.thread != self;
                            });
    });
}

void Stations::BroadcastMessage(const ferrite::utility::ImmutableString& station,
                                const Kiln::Message& message)
{
    Lock lock(mMutex);
    const std::uint64_t end = mNextSubscription;
    SubscriptionKey key(station, 0);
    // The map may change during each delivery: no iterator is kept, the next subscription is looked up.
    for (auto next = mSubscriptions.lower_bound(key);
         next != mSubscriptions.end() && next->first.first == key.first && next->first.second < end;
         next = mSubscriptions.upper_bound(key)) {
        key.second = next->first.second;
        DeliverTo(lock, *next->second, message);
    }
}

void Stations::DeliverTo(Lock& lock, Kiln::Listener& listener, const Kiln::Message& message)
{
    const auto delivery = mUnderWay.insert(mUnderWay.end(), {&listener, std::this_thread::get_id()});
    const Unlocked unlocked(lock, [this, delivery] {
        mUnderWay.erase(delivery);
        mChanged.notify_all();
    });
    Deliver(listener, message);
}

void Stations::PostMessageToUIThread(const ferrite::utility::ImmutableString& station,
                                     const Kiln::Message& message, bool /*flag*/)
{
    Callback callback = message.CreateStationCallback(station);
    const Lock lock(mMutex);
    std::list<PostedMessage> posted;
    posted.push_back({mPostedCount + 1, std::move(callback)});
    mUnfinished.insert(mPostedCount + 1);
    mPosted.splice(mPosted.end(), posted);
    ++mPostedCount;
    mChanged.notify_all();
}

std::size_t Stations::DeliverPosted()
{
    if (mDelivery != Delivery::kByHand)
        throw std::logic_error("ReferenceHost::Stations: a thread of its own delivers what is posted");
    std::size_t delivered = 0;
    Lock lock(mMutex);
    const std::uint64_t end = mPostedCount;
    for (; !mPosted.empty() && mPostedCount - mPosted.size() < end; ++delivered)
        DeliverNext(lock);
    return delivered;
}

/// Requires that something is posted.
void Stations::DeliverNext(Lock& lock)
{
    std::list<PostedMessage> taken;
    taken.splice(taken.end(), mPosted, mPosted.begin());
    ++mRunning;
    const Unlocked unlocked(lock, [this, ordinal = taken.front().ordinal] {
        --mRunning;
        mUnfinished.erase(ordinal);
        mChanged.notify_all();
    });
    // Moved to here so that the message is gone before the delivery counts as finished.
    const std::list<PostedMessage> running = std::move(taken);
    const Callback& deliver = running.front().deliver;
    if (mDelivery == Delivery::kByHand) {
        deliver();
        return;
    }
    try {
        deliver();
    } catch (...) {
        Report(std::current_exception());
    }
}

void Stations::RunUserInterfaceThread()
{
    Lock lock(mMutex);
    for (;;) {
        mChanged.wait(lock, [this] { return mEnding || !mPosted.empty(); });
        if (mEnding)
            return;
        DeliverNext(lock);
    }
}

void Stations::Report(const std::exception_ptr& exception)
{
    ExceptionHandler handler;
    {
        const Lock lock(mMutex);
        ++mExceptionCount;
        mLastException = exception;
        handler = mExceptionHandler;
    }
    if (handler)
        handler(exception);
}

void Stations::WaitUntilDelivered()
{
    Lock lock(mMutex);
    mChanged.wait(lock,
                  [this, end = mPostedCount] { return mUnfinished.empty() || *mUnfinished.begin() > end; });
}

void Stations::DropPosted()
{
    Lock lock(mMutex);
    while (!mPosted.empty() || mRunning != 0) {
        std::list<PostedMessage> dropped;
        dropped.swap(mPosted);
        if (!dropped.empty()) {
            const Unlocked unlocked(
                lock, [this, first = dropped.front().ordinal, last = dropped.back().ordinal] {
                    mUnfinished.erase(mUnfinished.lower_bound(first), mUnfinished.upper_bound(last));
                    mChanged.notify_all();
                });
            dropped.clear();
        }
        mChanged.wait(lock, [this] { return mRunning == 0; });
    }
}

void Stations::SetExceptionHandler(ExceptionHandler handler)
{
    const Lock lock(mMutex);
    mExceptionHandler.swap(handler);
}

std::size_t Stations::ExceptionCount() const
{
    const Lock lock(mMutex);
    return mExceptionCount;
}

std::exception_ptr Stations::LastException() const
{
    const Lock lock(mMutex);
    return mLastException;
}

}  // namespace ReferenceHost
