#pragma once

#include "assetconnector/host/kiln/IStations.h"

#include <boost/function.hpp>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <list>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

namespace ReferenceHost {

/// Station messaging in one process. Every operation may be called on any thread at any time, from inside a
/// delivery too; no lock is held while a listener runs.
///
/// Posted messages are copied with memory of the installed host: deliver or drop them before it goes
/// (Installation does so).
class Stations : public Kiln::IStations
{
public:
    /// Who delivers posted messages.
    enum class Delivery
    {
        kByHand,     ///< Whoever calls DeliverPosted.
        kOwnThread,  ///< A user-interface thread that lives as long as this object.
    };

    /// Called with what a listener threw on the user-interface thread. Must not throw.
    using ExceptionHandler = boost::function<void(std::exception_ptr)>;

    explicit Stations(Delivery delivery);

    /// Drops what is posted, waits for the delivery under way and ends the thread. Not on that thread.
    ~Stations() override;

    /// A listener that is added twice gets each message twice. One that is added during a broadcast does
    /// not get that message.
    /// \throws std::bad_alloc
    void AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener) override;

    /// Broadcasts under way deliver nothing more to the listener. Two threads that end, each from inside a
    /// delivery, the listener that the other one is delivering to wait for ever. A delivery is told by its
    /// listener's address: a new listener where one was destroyed inside its own delivery waits for it, too.
    void EndSubscriptions(Kiln::Listener& listener) noexcept override;

    /// \throws What a listener throws, std::bad_alloc.
    void BroadcastMessage(const ferrite::utility::ImmutableString& station,
                          const Kiln::Message& message) override;

    /// \param flag Not needed here: every message waits for its turn.
    /// \throws What Message::CreateStationCallback throws; nothing is posted then.
    void PostMessageToUIThread(const ferrite::utility::ImmutableString& station, const Kiln::Message& message,
                               bool flag) override;

    /// Delivers everything that was posted before this call, in the order of posting; what is posted
    /// meanwhile waits for the next call. One thread at a time.
    /// \return How many messages were delivered.
    /// \throws std::logic_error when the object has a thread of its own. What a listener throws: that
    ///         message is done with, those behind it stay.
    std::size_t DeliverPosted();

    /// Waits until everything that was posted before this call is delivered or dropped. Not from inside a
    /// delivery.
    void WaitUntilDelivered();

    /// Drops every posted message and waits for the delivery under way; what that one posts is dropped
    /// too. Not from inside a delivery of a posted message.
    void DropPosted();

    /// \param handler Empty for none. It runs on the user-interface thread.
    void SetExceptionHandler(ExceptionHandler handler);

    /// \return How many deliveries on the user-interface thread ended with an exception.
    std::size_t ExceptionCount() const;

    /// \return The last of these exceptions; null when there was none.
    std::exception_ptr LastException() const;

private:
    using Lock = std::unique_lock<std::mutex>;
    using Callback = boost::function<void()>;
    using SubscriptionKey = std::pair<ferrite::utility::ImmutableString, std::uint64_t>;

    struct PostedMessage
    {
        std::uint64_t ordinal;  ///< From 1.
        Callback deliver;
    };

    struct DeliveryUnderWay
    {
        const Kiln::Listener* listener;
        std::thread::id thread;
    };

    void DeliverTo(Lock& lock, Kiln::Listener& listener, const Kiln::Message& message);
    void DeliverNext(Lock& lock);
    void RunUserInterfaceThread();
    void Report(const std::exception_ptr& exception);

    const Delivery mDelivery;
    mutable std::mutex mMutex;
    std::condition_variable mChanged;

    std::map<SubscriptionKey, Kiln::Listener*> mSubscriptions;  ///< In the order of subscription.
    std::uint64_t mNextSubscription = 0;
    std::list<DeliveryUnderWay> mUnderWay;

    std::list<PostedMessage> mPosted;
    std::uint64_t mPostedCount = 0;       ///< Ever posted.
    std::set<std::uint64_t> mUnfinished;  ///< The ordinals of those neither delivered nor dropped.
    std::size_t mRunning = 0;             ///< Taken off the queue, not yet finished.

    ExceptionHandler mExceptionHandler;
    std::size_t mExceptionCount = 0;
    std::exception_ptr mLastException;

    bool mEnding = false;
    std::thread mThread;  ///< The last member: it uses all the others.
};

}  // namespace ReferenceHost
