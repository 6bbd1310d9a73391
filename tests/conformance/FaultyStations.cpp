#include "tests/conformance/FaultyStations.h"

#include "assetconnector/host/kiln/Message.h"

#include <algorithm>
#include <future>
#include <stdexcept>

using ferrite::utility::ImmutableString;

std::string FaultyStations::NameOf(const ImmutableString& station) const
{
    constexpr std::size_t kBeginning = 20;
    if (Has(StationFault::kComparesAddresses))
        return std::to_string(reinterpret_cast<std::uintptr_t>(&station.AsUTF8()));
    return Has(StationFault::kComparesBeginnings) ? station.AsUTF8().substr(0, kBeginning) : station.AsUTF8();
}

bool FaultyStations::IsListened(const std::string& station) const
{
    return std::any_of(mSubscriptions.begin(), mSubscriptions.end(),
                       [&station](const SubscriptionRef& entry) { return entry->station == station; });
}

bool FaultyStations::IsInside() const
{
    return std::any_of(mUnderWay.begin(), mUnderWay.end(), [](const UnderWay& delivery) {
        return delivery.thread == std::this_thread::get_id();
    });
}

void FaultyStations::AddListener(const ImmutableString& station, Kiln::Listener& listener)
{
    const Lock lock(mMutex);
    if (Has(StationFault::kThreadOfItsOwn) && std::this_thread::get_id() != mMade)
        throw std::logic_error("not on this thread");
    if (Has(StationFault::kLosesAddedInside) && IsInside())
        return;
    mKnown.insert(NameOf(station));
    const auto others = std::count_if(mSubscriptions.begin(), mSubscriptions.end(),
                                      [&](const auto& entry) { return entry->station == NameOf(station); });
    const bool isFirst = Has(StationFault::kPutsTheFourthFirst) && others >= 3;
    mSubscriptions.insert(isFirst ? mSubscriptions.begin() : mSubscriptions.end(),
                          std::make_shared<Subscription>(Subscription{NameOf(station), &listener}));
}

void FaultyStations::EndSubscriptions(Kiln::Listener& listener) noexcept
{
    Lock lock(mMutex);
    bool isFirst = true;
    for (const SubscriptionRef& entry : mSubscriptions)
        if (entry->listener == &listener && (isFirst || !Has(StationFault::kEndsOneSubscription))) {
            entry->ended = true;
            isFirst = false;
        }
    mSubscriptions.erase(std::remove_if(mSubscriptions.begin(), mSubscriptions.end(),
                                        [](const SubscriptionRef& entry) { return entry->ended; }),
                         mSubscriptions.end());
    const auto self = std::this_thread::get_id();
    for (const UnderWay& delivery : mUnderWay)
        if (delivery.subscription->listener == &listener && delivery.thread == self) {
            EndFromInside(lock, *delivery.subscription);
            break;
        }
    if (Has(StationFault::kDoesNotWait))
        return;
    mChanged.wait(lock, [this, &listener, self] {
        return std::none_of(mUnderWay.begin(), mUnderWay.end(), [&](const UnderWay& delivery) {
            return delivery.subscription->listener == &listener && delivery.thread != self;
        });
    });
}

void FaultyStations::EndFromInside(Lock& lock, const Subscription& subscription)
{
    constexpr std::chrono::seconds kTooLong(2);
    mSkipsNext = Has(StationFault::kSkipsTheNext);
    if (Has(StationFault::kWaitsForItself))
        mChanged.wait_for(lock, kTooLong, [] { return false; });
    if (Has(StationFault::kLastListenerEndsStation) && !IsListened(subscription.station))
        mEndedStations.insert(subscription.station);
}

void FaultyStations::BroadcastMessage(const ImmutableString& station, const Kiln::Message& message)
{
    const std::string name = NameOf(station);
    {
        const Lock lock(mMutex);
        if (Has(StationFault::kUnknownStationThrows) && mKnown.count(name) == 0)
            throw std::out_of_range("no such station");
        if (Has(StationFault::kNestedLater) && IsInside()) {
            mLater.push_back(message.CreateStationCallback(station));
            return;
        }
    }
    DeliverAll(name, message);
    Lock lock(mMutex);
    if (IsInside())
        return;
    const auto later = std::exchange(mLater, {});
    lock.unlock();
    for (const auto& broadcast : later)
        broadcast();
}

void FaultyStations::DeliverAll(const std::string& station, const Kiln::Message& message)
{
    std::vector<SubscriptionRef> entries;
    {
        const Lock lock(mMutex);
        if (mStuck.count(station) != 0 || mEndedStations.count(station) != 0)
            return;
        entries = mSubscriptions;
    }
    for (const SubscriptionRef& entry : entries) {
        if (entry->station != station)
            continue;
        {
            const Lock lock(mMutex);
            if (std::exchange(mSkipsNext, false) || (entry->ended && !Has(StationFault::kDeliversToEnded)))
                continue;
        }
        if (Has(StationFault::kDeliversOnAnotherThread))
            std::async(std::launch::async, [&] { DeliverTo(entry, message); }).get();
        else
            DeliverTo(entry, message);
    }
}

void FaultyStations::DeliverTo(const SubscriptionRef& subscription, const Kiln::Message& message)
{
    Lock lock(mMutex);
    const auto delivery = mUnderWay.insert(mUnderWay.end(), {subscription.get(), std::this_thread::get_id()});
    lock.unlock();
    std::exception_ptr thrown;
    try {
        Deliver(*subscription->listener, message);
    } catch (...) {
        thrown = std::current_exception();
    }
    lock.lock();
    mUnderWay.erase(delivery);
    mChanged.notify_all();
    if (thrown && Has(StationFault::kStuckAfterException))
        mStuck.insert(subscription->station);
    lock.unlock();
    if (thrown && !Has(StationFault::kSwallowsExceptions))
        std::rethrow_exception(thrown);
}
