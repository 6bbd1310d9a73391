#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "tests/support/HostTest.h"

#include <boost/bind/bind.hpp>

#include <array>
#include <atomic>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using ferrite::utility::ImmutableString;
using ReferenceHost::Host;
using ReferenceHost::Installation;
using ReferenceHost::Stations;

const auto kStation = ImmutableString::CreateStatic("A");
using Log = std::vector<std::string>;

class Receiver : public Kiln::Listener
{
public:
    using Action = boost::function<void(const std::string& type)>;

    explicit Receiver(Action action) : mAction(std::move(action))
    {
        Kiln::StationUtils::AddListener(kStation, this);
    }
    ~Receiver() override { EndSubscriptions(); }

    using Kiln::Listener::EndSubscriptions;

private:
    void OnStationMessage(const Kiln::Message& message) override
    {
        mAction(Narrow(static_cast<const Ridge::TandemEvent&>(message).GetType()));
    }

    Action mAction;
};

void Broadcast(std::string_view type, const ImmutableString& station = kStation)
{
    Kiln::StationUtils::BroadcastMessage(station, Ridge::TandemEvent(U(type), u""));
}

void Post(std::string_view type)
{
    Kiln::StationUtils::PostMessageToUIThread(kStation, Ridge::TandemEvent(U(type), u""), true);
}

class StationsTest : public HostTest
{
protected:
    Receiver::Action Named(const std::string& name)
    {
        return [this, name](const std::string& type) { log.push_back(name + type); };
    }

    Log log;
};

TEST_F(StationsTest, ABroadcastFollowsTheSubscriptionsAsTheyChange)
{
    std::unique_ptr<Receiver> second;
    std::unique_ptr<Receiver> late;
    Receiver first([&](const std::string& type) {
        log.push_back("first" + type);
        if (late == nullptr)
            late = std::make_unique<Receiver>(Named("late"));
        second.reset();
    });
    second = std::make_unique<Receiver>(Named("second"));
    const Receiver third(Named("third"));

    Broadcast("1");
    Broadcast("?", ImmutableString::CreateStatic("B"));
    Broadcast("2");
    EXPECT_EQ(log, (Log{"first1", "third1", "first2", "third2", "late2"}));
}

TEST_F(StationsTest, TheFirstExceptionEndsABroadcast)
{
    const Receiver first(Named("first"));
    Receiver second([](const std::string& type) { throw std::runtime_error(type); });
    const Receiver third(Named("third"));

    EXPECT_THROW(Broadcast("1"), std::runtime_error);
    second.EndSubscriptions();  // waits for nothing: the failed delivery is over
    Broadcast("2");
    EXPECT_EQ(log, (Log{"first1", "first2", "third2"}));
}

TEST_F(StationsTest, EndSubscriptionsWaitsForOtherThreadsAlone)
{
    std::promise<void> entered;
    std::promise<void> leave;
    std::atomic<bool> left{false};
    Receiver receiver([&](const std::string& type) {
        if (type == "nested") {
            receiver.EndSubscriptions();  // its own thread is in two deliveries: no wait
            entered.set_value();
            leave.get_future().wait();
            left = true;
        } else {
            Broadcast("nested");
        }
    });
    std::thread delivering([] { Broadcast("outer"); });
    entered.get_future().wait();
    auto ending = std::async(std::launch::async, [&] {
        receiver.EndSubscriptions();
        return left.load();
    });
    EXPECT_EQ(ending.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    leave.set_value();
    EXPECT_TRUE(ending.get());
    delivering.join();
}

TEST_F(StationsTest, DeliverPostedTakesWhatWasPostedBeforeTheCall)
{
    const Receiver receiver([&](const std::string& type) {
        log.push_back(type);
        if (type == "1")
            Post("3");
        if (type == "bad")
            throw std::runtime_error(type);
    });
    Stations& stations = host.GetStations();
    Post("1");
    Post("2");
    EXPECT_EQ(stations.DeliverPosted(), 2U);
    EXPECT_EQ(log, (Log{"1", "2"}));

    Post("bad");
    Post("4");
    EXPECT_THROW(stations.DeliverPosted(), std::runtime_error);
    EXPECT_EQ(stations.DeliverPosted(), 1U);
    EXPECT_EQ(log, (Log{"1", "2", "3", "bad", "4"}));
    EXPECT_EQ(host.GetMemory().LiveBlocks(), 0U);
}

TEST(StationsThread, DeliversInOrderAndSurvivesExceptions)
{
    Host host;
    const Installation installation(host);
    Stations& stations = host.GetStations();
    std::vector<int> delivered;
    std::atomic<int> handled{0};
    stations.SetExceptionHandler([&](const std::exception_ptr& /*exception*/) { ++handled; });
    const Receiver receiver([&](const std::string& type) {
        delivered.push_back(std::stoi(type));
        if (delivered.back() % 10 == 0)
            throw std::runtime_error("tenth");
    });
    std::vector<int> posted;
    for (int i = 0; i < 100; ++i) {
        posted.push_back(i);
        Post(std::to_string(i));
    }
    stations.WaitUntilDelivered();
    EXPECT_EQ(delivered, posted);
    EXPECT_EQ(stations.ExceptionCount(), 10U);
    EXPECT_EQ(handled, 10);
    EXPECT_THROW(std::rethrow_exception(stations.LastException()), std::runtime_error);
    EXPECT_THROW(stations.DeliverPosted(), std::logic_error);
}

TEST(StationsThread, UninstallingDropsWhatIsStillPosted)
{
    Host host;
    std::promise<void> entered;
    int delivered = 0;
    {
        const Installation installation(host);
        const Receiver receiver([&](const std::string& /*type*/) {
            if (++delivered == 1)
                entered.set_value();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            Post("posted by a delivery");
        });
        for (int i = 0; i < 50; ++i)
            Post("message");
        entered.get_future().wait();
    }
    EXPECT_LT(delivered, 50);
    EXPECT_EQ(host.GetMemory().LiveBlocks(), 0U);
    EXPECT_EQ(host.GetMemory().LiveBytes(), 0U);
}

/// For the thread sanitizer as much as for what it expects.
TEST(StationsThread, EverythingAtOnce)
{
    constexpr int kRounds = 200;
    constexpr std::size_t kPosters = 2;
    Host host;
    const Installation installation(host);
    std::array<int, kPosters> next{};
    std::atomic<int> outOfOrder{0};
    std::atomic<int> broadcasts{0};
    const Receiver steady([&](const std::string& type) {
        if (type == "broadcast") {
            ++broadcasts;
            return;
        }
        const auto poster = static_cast<std::size_t>(type[0] - '0');
        if (std::stoi(type.substr(1)) != next[poster]++)
            ++outOfOrder;
    });
    std::vector<std::thread> threads;
    for (std::size_t poster = 0; poster < kPosters; ++poster)
        threads.emplace_back([poster] {
            for (int i = 0; i < kRounds; ++i)
                Post(std::to_string(poster) + std::to_string(i));
        });
    threads.emplace_back([] {
        for (int i = 0; i < kRounds; ++i)
            Broadcast("broadcast");
    });
    std::atomic<int> tooLate{0};
    for (int churner = 0; churner < 2; ++churner)
        threads.emplace_back([&] {
            for (int i = 0; i < kRounds; ++i) {
                bool ended = false;  // not atomic: deliveries and the end are ordered
                Receiver passing([&](const std::string& /*type*/) { tooLate += ended ? 1 : 0; });
                Broadcast("broadcast");
                passing.EndSubscriptions();
                ended = true;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    host.GetStations().WaitUntilDelivered();
    EXPECT_EQ(next, (std::array<int, kPosters>{kRounds, kRounds}));
    EXPECT_EQ(outOfOrder, 0);
    EXPECT_EQ(broadcasts, 3 * kRounds);
    EXPECT_EQ(tooLate, 0);
}

}  // namespace
