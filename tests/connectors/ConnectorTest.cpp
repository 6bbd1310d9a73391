#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/ferrite/Contract.h"
#include "assetconnector/host/kiln/ReferenceBroker.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/message/RidgeRecords.h"
#include "reference_host/Forwarders.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/Marker.h"
#include "session/format/ConnectorKinds.h"
#include "tests/support/HostTest.h"

#include <boost/make_shared.hpp>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <ostream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using ferrite::utility::Guid;
using Notifier = Ridge::IIngestLibraryNotifier;
using ConnectorRef = Kiln::InterfaceRef<Notifier>;

/// A dispatcher that calls back when it is told to refuse the exit.
class ExitDispatcher : public ReferenceHost::IdleDispatcher
{
public:
    void RefuseExit(Ridge::ResultCode /*code*/) override
    {
        ++calls;
        if (onCall)
            onCall();
    }

    std::atomic<int> calls{0};
    std::function<void()> onCall;
};

/// A panel that calls back for each notification.
class TestPanel : public ReferenceHost::Panel
{
public:
    void OnNotification(const std::string& type, const std::string& /*data*/) override
    {
        types.push_back(type);
        if (onNotification)
            onNotification();
    }

    std::vector<std::string> types;
    std::function<void()> onNotification;
};

struct ConnectorKind
{
    const char* name;
    ConnectorRef (*create)(ALD::IAssetLibraryDispatcher* dispatcher);
};

std::ostream& operator<<(std::ostream& stream, const ConnectorKind& kind)
{
    return stream << kind.name;
}

/// A hook that calls back for one operation of the host.
struct CallBack
{
    template <class... Arguments>
    void operator()(const char* called, const Arguments&... /*arguments*/) const
    {
        if (onCall && operation == called)
            onCall();
    }

    std::string operation;
    std::function<void()> onCall;
};

/// Stations that tell who subscribes, before the subscription is there.
class WatchedStations : public ReferenceHost::ForwardingStations<const ReferenceHost::NoHook>
{
public:
    explicit WatchedStations(Kiln::IStations& next) : ForwardingStations(next, kNoHook) {}

    void AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener) override
    {
        if (onSubscribe)
            onSubscribe(listener);
        ForwardingStations::AddListener(station, listener);
    }
    void EndSubscriptions(Kiln::Listener& listener) noexcept override
    {
        if (onEnd)
            onEnd(listener);
        ForwardingStations::EndSubscriptions(listener);
    }

    std::function<void(Kiln::Listener&)> onSubscribe;
    std::function<void(Kiln::Listener&)> onEnd;

private:
    static constexpr ReferenceHost::NoHook kNoHook{};
};

/// What holds for both connectors.
class BothConnectors : public ::testing::TestWithParam<ConnectorKind>
{
protected:
    ConnectorRef Create() { return GetParam().create(&dispatcher); }

    static Kiln::SharedReferenceBroker BrokerOf(const ConnectorRef& connector)
    {
        return AC::BrokerOf(connector).value();
    }

    void Raise(const UTF16String& type, const UTF16String& data)
    {
        host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(), Ridge::TandemEvent(type, data));
    }

    ReferenceHost::Host host{ReferenceHost::Stations::Delivery::kByHand};
    WatchedStations stations{host.GetStations()};
    ReferenceHost::Installation installation{{host.GetPanelEvents(), stations, host.GetIngestLibrary(),
                                              host.GetFiles(), host.GetTexts(), host.GetMemory()},
                                             host.GetStations()};
    ExitDispatcher dispatcher;
};

INSTANTIATE_TEST_SUITE_P(Connectors, BothConnectors,
                         ::testing::Values(ConnectorKind{"Library", &AC::CreateIngestGlintLibraryConnector},
                                           ConnectorKind{"MediaCollection",
                                                         &AC::CreateIngestMediaCollectionConnector}),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(BothConnectors, LiveAsLongAsTheyAreReferenced)
{
    ConnectorRef connector = Create();
    const Kiln::SharedReferenceBroker broker = BrokerOf(connector);
    EXPECT_EQ(broker->GetCount(), 1);
    EXPECT_EQ(broker->GetObject(), connector->GetRawPointer());
    EXPECT_THROW(broker->SetObject(connector->GetRawPointer()), ferrite::utility::ContractError);

    auto locked = broker.Lock();
    EXPECT_EQ(broker->GetCount(), 2);
    connector.Clear();
    EXPECT_NE(broker->GetObject(), nullptr);
    Raise(AC::kPlexaEventType_ExitApp, u"<a/>");
    EXPECT_EQ(dispatcher.calls, 1) << "still listening";

    locked.Clear();
    EXPECT_EQ(broker->GetObject(), nullptr);
    EXPECT_EQ(broker->GetCount(), Kiln::ReferenceBroker::kDestroyed);
    EXPECT_FALSE(broker.Lock());
    Raise(AC::kPlexaEventType_ExitApp, u"<a/>");
    EXPECT_EQ(dispatcher.calls, 1);
}

/// The base ends them once more, but then a delivery under way would find the connector gone.
TEST_P(BothConnectors, EndTheirSubscriptionsWhileTheyAreWhole)
{
    std::vector<bool> isWhole;
    stations.onEnd = [&isWhole](Kiln::Listener& listener) {
        isWhole.push_back(dynamic_cast<AC::ConnectorFrame*>(&listener) != nullptr);
    };
    const std::vector<bool> wholeThenBase{true, false};
    Create().Clear();
    EXPECT_EQ(std::exchange(isWhole, {}), wholeThenBase);
    stations.onSubscribe = [](Kiln::Listener& /*listener*/) { throw std::runtime_error("no listeners"); };
    EXPECT_THROW(Create(), std::runtime_error);
    EXPECT_EQ(isWhole, wholeThenBase);
}

TEST_P(BothConnectors, OfferTwoInterfacesAndTakeNoReference)
{
    const ConnectorRef connector = Create();
    void* out = this;
    EXPECT_EQ(connector->QueryInterface(Notifier::kInterfaceID, out), 0);
    EXPECT_EQ(out, connector.Get());
    AC::Query<AC::IAssetConnectorPrivate>(connector)->SetDispatcher(nullptr);
    EXPECT_FALSE(AC::Query<AC::IAssetConnectorPrivate>(ReferenceHost::Marker::Make(u"")));
    EXPECT_FALSE(AC::Query<AC::IAssetConnectorPrivate>(ConnectorRef()));
    EXPECT_FALSE(AC::BrokerOf(ConnectorRef()));
    Raise(AC::kPlexaEventType_ExitApp, u"<a/>");
    const auto panel = boost::make_shared<TestPanel>();
    host.GetPanelEvents().Attach(panel);
    Raise(AC::kPlexaEventType_OpenIngestDlg, u"<a/>");
    EXPECT_EQ(panel->types.size(), 1U) << "what the connector answers itself goes out";
    EXPECT_EQ(dispatcher.calls, 0) << "without a dispatcher nothing is forwarded";
    EXPECT_EQ(connector->QueryInterface(Guid(1, 2), out), static_cast<std::int32_t>(0xA00A0001));
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(BrokerOf(connector)->GetCount(), 1);
}

TEST_P(BothConnectors, MayBeDroppedFromInsideTheirOwnCalls)
{
    const auto panel = boost::make_shared<TestPanel>();
    host.GetPanelEvents().Attach(panel);
    ConnectorRef connector;
    panel->onNotification = [&connector] { connector.Clear(); };
    dispatcher.onCall = [&connector] { connector.Clear(); };

    connector = Create();
    auto broker = BrokerOf(connector);
    connector->OnTransferProgress(Guid(1, 1), Guid(2, 2), 50);  // sends
    EXPECT_EQ(broker->GetObject(), nullptr);

    connector = Create();
    broker = BrokerOf(connector);
    Raise(AC::kPlexaEventType_OpenIngestDlg, u"<a/>");  // replies
    EXPECT_EQ(broker->GetObject(), nullptr);

    connector = Create();
    broker = BrokerOf(connector);
    Raise(AC::kPlexaEventType_ExitApp, u"<a/>");  // forwards
    EXPECT_EQ(broker->GetObject(), nullptr);
    EXPECT_EQ(panel->types.size(), 2U);
}

/// What happens while the ingest library makes a media info.
class WhileAMediaInfoIsMade : public ::testing::Test
{
protected:
    void Raise(const UTF16String& type)
    {
        host.GetStations().BroadcastMessage(
            Ridge::GetPlexaStationID(),
            Ridge::TandemEvent(type,
                               u"<a><fileList><filePath path='/a'/></fileList>"
                               u"<assetMediaInfoList><assetMediaInfo/></assetMediaInfoList></a>"));
    }

    ReferenceHost::Host host{ReferenceHost::Stations::Delivery::kByHand};
    CallBack hook;
    ReferenceHost::ForwardingIngestLibrary<const CallBack> library{host.GetIngestLibrary(), hook};
    ReferenceHost::Installation installation{{host.GetPanelEvents(), host.GetStations(), library,
                                              host.GetFiles(), host.GetTexts(), host.GetMemory()},
                                             host.GetStations()};
};

TEST_F(WhileAMediaInfoIsMade, ConnectorsMayBeDropped)
{
    struct
    {
        ConnectorRef (*create)(ALD::IAssetLibraryDispatcher* dispatcher);
        const UTF16String& request;  ///< Empty: a callback.
    } const rows[] = {
        {AC::CreateIngestGlintLibraryConnector, AC::kPlexaEventType_ImportXMP},
        {AC::CreateIngestGlintLibraryConnector, AC::kPlexaEventType_ReadXMPFromDisk},
        {AC::CreateIngestGlintLibraryConnector, {}},
        {AC::CreateIngestMediaCollectionConnector, AC::kPlexaEventType_ReadXMPFromDisk},
        {AC::CreateIngestMediaCollectionConnector, {}},
    };
    for (const auto& row : rows) {
        ConnectorRef connector = row.create(nullptr);
        const auto broker = AC::BrokerOf(connector).value();
        hook.operation = row.request.empty() ? "Ridge::AssetMediaInfo::CreateMasterClipMediaInfo"
                                             : "Ridge::AssetMediaInfo::Create";
        hook.onCall = [&connector] { connector.Clear(); };
        if (row.request.empty())
            connector->OnReadXMPFinished({}, {}, 0, u"/a", {}, {}, {}, {}, {}, {}, {}, {}, {});
        else
            Raise(row.request);
        EXPECT_EQ(broker->GetObject(), nullptr);
    }
}

TEST_F(WhileAMediaInfoIsMade, ARequestMayChooseWhatTheLibraryPanelIsTold)
{
    const auto panel = boost::make_shared<TestPanel>();
    host.GetPanelEvents().Attach(panel);
    const ConnectorRef connector = AC::CreateIngestGlintLibraryConnector(nullptr);
    const auto report = [&connector] {
        connector->OnReadXMPFinished({}, {}, 0, u"/a", {}, {}, {}, {}, {}, {}, {}, {}, {});
    };
    Raise(AC::kPlexaEventType_ReadXMPFromDisk);
    report();
    hook.operation = "Ridge::AssetMediaInfo::CreateMasterClipMediaInfo";
    hook.onCall = [this] { Raise(AC::kPlexaEventType_ImportXMP); };
    report();
    EXPECT_EQ(panel->types,
              std::vector<std::string>({Narrow(AC::kPlexaEventType_NotificationReadXMPFromDiskStatus),
                                        Narrow(AC::kPlexaEventType_NotificationImportXMPStatus)}));
}

/// How often connectors are made and dropped while other threads are busy with them.
int Rounds()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int kLong = 50000;
#else
    constexpr int kLong = 1000000;
#endif
    return std::getenv("ASSETCONNECTOR_LONG_TESTS") != nullptr ? kLong : 5000;
}

TEST_P(BothConnectors, AreCreatedAndDroppedWhileMessagesArrive)
{
    std::mutex mutex;
    Kiln::SharedReferenceBroker current;
    stations.onSubscribe = [&](Kiln::Listener& listener) {
        const std::lock_guard<std::mutex> lock(mutex);
        current = dynamic_cast<AC::ConnectorFrame&>(listener).GetReferenceBroker();
    };
    std::atomic<int> used{0};
    std::atomic<std::size_t> delivered{0};
    std::atomic<bool> stop{false};
    const std::function<void()> jobs[] = {
        [&] { Raise(AC::kPlexaEventType_ExitApp, u"<a><allowExit>false</allowExit></a>"); },
        [&] { delivered += host.GetStations().DeliverPosted(); },
        [&] {
            std::unique_lock<std::mutex> lock(mutex);
            Kiln::SharedReferenceBroker broker = current;
            lock.unlock();
            if (const auto locked = broker.Lock()) {
                const ConnectorRef counted = ConnectorRef::Retain(static_cast<Notifier*>(locked.Get()));
                counted->OnIngestStarted({});  // sent by one connector, posted by the other
                ++used;
            }
        },
    };
    std::vector<std::thread> threads;
    for (const auto& job : jobs)
        threads.emplace_back([&stop, &job] {
            for (; !stop; std::this_thread::yield())
                job();
        });
    for (int i = Rounds(); i > 0; --i) {
        ConnectorRef connector = Create();  // those who would use it have its broker already
        ASSERT_EQ(BrokerOf(connector)->GetObject(), connector.Get());
        std::this_thread::yield();  // to those who would use it
        connector.Clear();
    }
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    host.GetStations().DropPosted();
    EXPECT_FALSE(current.Lock());
    EXPECT_GT(dispatcher.calls, 0);
    EXPECT_GT(used, 0);
    EXPECT_EQ(delivered > 0, GetParam().create == &AC::CreateIngestMediaCollectionConnector);
    EXPECT_EQ(host.GetMemory().LiveBlocks(), 0U);
}

/// A seed of the fuzzer begins with the place of its request in the catalogue.
TEST(EventCatalogue, HasASeedForEachRequestOfAConnector)
{
    for (std::size_t place = 0; place < AC::kRequestCount; ++place) {
        const UTF16String& identifier = *AC::EventCatalogue()[place].identifier;
        const std::string name = Narrow(identifier.substr(identifier.rfind(u'.') + 1));
        std::ifstream seed(TEST_DATA "/../fuzz/corpus/requests/" + name, std::ios::binary);
        for (const auto& kind : Session::kConnectorKinds)
            EXPECT_TRUE(seed.is_open() || !kind.handles(identifier)) << name << " has none";
        if (seed.is_open()) {
            EXPECT_EQ(seed.get(), static_cast<int>(place)) << name;
        }
    }
}

TEST(ReferenceBroker, BindsOneObject)
{
    Kiln::ReferenceBroker broker;
    EXPECT_FALSE(broker.Lock());
    EXPECT_THROW(broker.SetObject(nullptr), ferrite::utility::ContractError);
    const auto object = ReferenceHost::Marker::Make(u"");
    broker.SetObject(object.Get());
    EXPECT_FALSE(broker.Lock()) << "nobody holds a reference yet";
    EXPECT_EQ(broker.GetCount(), 0);
}

}  // namespace
