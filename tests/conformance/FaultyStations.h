#pragma once

#include "reference_host/Stations.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

/// One fault in how stations deliver what is broadcast.
enum class StationFault
{
    kNone,
    kDeliversOnAnotherThread,
    kPutsTheFourthFirst,
    kComparesAddresses,
    kComparesBeginnings,
    kUnknownStationThrows,
    kEndsOneSubscription,
    kSkipsTheNext,
    kWaitsForItself,
    kDeliversToEnded,
    kDoesNotWait,
    kLosesAddedInside,
    kNestedLater,
    kSwallowsExceptions,
    kStuckAfterException,
    kThreadOfItsOwn,
    kLastListenerEndsStation,
};

/// Stations with one fault. Who waits delivers what is posted, unless a thread does.
class FaultyStations : public ReferenceHost::Stations
{
public:
    explicit FaultyStations(StationFault fault, Delivery delivery = Delivery::kByHand)
        : Stations(delivery), mFault(fault), mDelivery(delivery)
    {
    }

    void AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener) override;
    void EndSubscriptions(Kiln::Listener& listener) noexcept override;
    void BroadcastMessage(const ferrite::utility::ImmutableString& station,
                          const Kiln::Message& message) override;

    void Wait()
    {
        if (mDelivery == Delivery::kByHand)
            DeliverPosted();
        else
            WaitUntilDelivered();
    }

private:
    using Lock = std::unique_lock<std::mutex>;

    struct Subscription
    {
        std::string station;
        Kiln::Listener* listener;
        bool ended = false;
    };
    using SubscriptionRef = std::shared_ptr<Subscription>;

    struct UnderWay
    {
        const Subscription* subscription;
        std::thread::id thread;
    };

    std::string NameOf(const ferrite::utility::ImmutableString& station) const;
    bool Has(StationFault fault) const { return mFault == fault; }
    bool IsListened(const std::string& station) const;
    bool IsInside() const;
    void EndFromInside(Lock& lock, const Subscription& subscription);
    void DeliverAll(const std::string& station, const Kiln::Message& message);
    void DeliverTo(const SubscriptionRef& subscription, const Kiln::Message& message);

    const StationFault mFault;
    const Delivery mDelivery;
    const std::thread::id mMade = std::this_thread::get_id();
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::vector<SubscriptionRef> mSubscriptions;
    std::list<UnderWay> mUnderWay;
    std::vector<boost::function<void()>> mLater;
    std::set<std::string> mKnown;
    std::set<std::string> mEndedStations;
    bool mSkipsNext = false;
    std::set<std::string> mStuck;
};

template <StationFault fault>
struct StationsThat : FaultyStations
{
    StationsThat() : FaultyStations(fault) {}
};

/// The same with a user-interface thread.
template <StationFault fault>
struct ThreadedStationsThat : FaultyStations
{
    ThreadedStationsThat() : FaultyStations(fault, Delivery::kOwnThread) {}
};
