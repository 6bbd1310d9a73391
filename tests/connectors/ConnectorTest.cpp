#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/ferrite/Contract.h"
#include "assetconnector/host/kiln/Exceptions.h"
#include "assetconnector/host/kiln/ReferenceBroker.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/message/Comparison.h"
#include "reference_host/Forwarders.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/Marker.h"
#include "tests/support/HostTest.h"

#include <boost/make_shared.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <ostream>
#include <stdexcept>
#include <thread>
#include <utility>
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
        endings.push_back(dynamic_cast<AC::ConnectorFrame*>(&listener) != nullptr);
        ForwardingStations::EndSubscriptions(listener);
    }

    std::function<void(Kiln::Listener&)> onSubscribe;
    std::vector<bool> endings;  ///< Whether the listener was still a connector.

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
    Create().Clear();
    const std::vector<bool> wholeThenBase{true, false};
    EXPECT_EQ(std::exchange(stations.endings, {}), wholeThenBase);
    stations.onSubscribe = [](Kiln::Listener& /*listener*/) {
        throw std::runtime_error("no more listeners");
    };
    EXPECT_THROW(Create(), std::runtime_error);
    EXPECT_EQ(stations.endings, wholeThenBase);
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
    const bool posts = GetParam().create == &AC::CreateIngestMediaCollectionConnector;
    const auto allWereBusy = [&] { return dispatcher.calls > 0 && used > 0 && (delivered > 0 || !posts); };
    for (int i = Rounds(); i > 0 || (i > -100 * Rounds() && !allWereBusy());
         --i) {                             // a busy machine takes longer
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
    EXPECT_TRUE(allWereBusy());
    EXPECT_EQ(delivered > 0, posts);
    EXPECT_EQ(host.GetMemory().LiveBlocks(), 0U);
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

using StationMessages = HostTest;

TEST_F(StationMessages, AreCopiedIntoTheHostsMemory)
{
    AC::ACMessage record;
    record.header.Set(Guid(1, 2), Guid(3, 4), u"panel");
    record.transferResultList.push_back(boost::make_shared<Ridge::TransferResult>());
    const AC::SaveAssetMessage message(record);
    const auto before = host.GetMemory().LiveBlocks();
    {
        const std::unique_ptr<Kiln::Message> copy(message.Clone());
        EXPECT_EQ(host.GetMemory().LiveBlocks(), before + 1);
        EXPECT_EQ(copy->MessageTypeID(), AC::SaveAssetMessage::TypeID());
        const auto& payload = static_cast<const AC::SaveAssetMessage&>(*copy).GetPayload();
        EXPECT_TRUE(AC::Comparison::Same(payload, record));
        EXPECT_EQ(payload.transferResultList.front(), record.transferResultList.front())
            << "items are shared";
    }
    EXPECT_EQ(host.GetMemory().LiveBlocks(), before);
    using Copy = Kiln::DynamicallyAllocatedMessage<AC::SaveAssetMessage>;
    {
        const std::unique_ptr<Kiln::Message> copy(new Copy(message));
        EXPECT_EQ(host.GetMemory().LiveBlocks(), before + 1);
    }
    EXPECT_EQ(host.GetMemory().LiveBlocks(), before);
    host.GetMemory().SetAllocationsLeft(0);
    EXPECT_EQ(message.Clone(), nullptr);
    EXPECT_THROW(new Copy(message), std::bad_alloc);
    EXPECT_THROW(message.CreateStationCallback(AC::GetMCAssetConnectorStation()), std::bad_alloc);
}

/// A payload whose copy may throw.
struct Fragile
{
    Fragile() = default;
    Fragile(const Fragile& other) : copiesLeft(other.copiesLeft)
    {
        if ((*copiesLeft)-- <= 0)
            throw std::runtime_error("no more copies");
    }
    std::shared_ptr<int> copiesLeft = std::make_shared<int>(1);
};

class FragileMessage : public AC::StationMessage<FragileMessage, Fragile>
{
public:
    static constexpr char kTypeName[] = ".?AVFragileMessage@@";
    explicit FragileMessage(const Fragile& payload) : StationMessage(payload) {}
};

TEST_F(StationMessages, GiveTheMemoryBackWhenThePayloadThrows)
{
    const FragileMessage message{Fragile()};
    const auto before = host.GetMemory().LiveBlocks();
    EXPECT_THROW(message.Clone(), std::runtime_error);
    EXPECT_THROW(message.CreateStationCallback(AC::GetMCAssetConnectorStation()), std::runtime_error);
    EXPECT_EQ(host.GetMemory().LiveBlocks(), before);
}

/// Keeps the identifiers of the messages that reach it.
class TestListener : public Kiln::Listener
{
public:
    ~TestListener() override { EndSubscriptions(); }
    std::vector<std::uint32_t> received;

private:
    void OnStationMessage(const Kiln::Message& message) override
    {
        received.push_back(message.MessageTypeID());
    }
};

TEST_F(StationMessages, StayAsTheyAreWhenTheyAreMoved)
{
    AC::ACMessage record;
    record.filePath = u"/a";
    AC::SaveAssetMessage message(record);
    const AC::SaveAssetMessage moved(std::move(message));
    EXPECT_EQ(message.GetPayload().filePath, u"/a");
    Ridge::TandemEvent event(u"type", u"data");
    const Ridge::TandemEvent movedEvent(std::move(event));
    EXPECT_EQ(event.GetType() + event.GetData(), u"typedata");
    ferrite::utility::ImmutableString name("station");
    ferrite::utility::ImmutableString movedName(std::move(name));
    EXPECT_EQ(name, movedName);
    movedName = std::move(name);
    EXPECT_EQ(name.AsUTF8(), "station");
}

TEST_F(StationMessages, ArriveAsOftenAsTheDeferredDeliveryRuns)
{
    TestListener listener;
    const auto station = AC::GetMCAssetConnectorStation();
    host.GetStations().AddListener(station, listener);
    boost::function<void()> deliver;
    {
        const Ridge::DeleteDynamicColumnsMessage message({Guid(1, 1)});
        deliver = message.CreateStationCallback(station);
    }
    deliver();
    const boost::function<void()> again = deliver;
    deliver.clear();
    again();
    EXPECT_EQ(listener.received, std::vector<std::uint32_t>(2, Ridge::DeleteDynamicColumnsMessage::TypeID()));
}

TEST(Host, MustBeInstalledOnce)
{
    EXPECT_THROW(AC::AddTandemEvents(), std::logic_error);
    EXPECT_THROW(AC::CreateIngestGlintLibraryConnector(nullptr), std::logic_error);
    ReferenceHost::Host host(ReferenceHost::Stations::Delivery::kByHand);
    const ReferenceHost::Installation installation(host);
    EXPECT_THROW(AC::InstallHost(host.Services()), std::logic_error);
    AC::UninstallHost();
    EXPECT_THROW(AC::InstallHost(host.Services(), AC::kInterfaceVersion + 1), std::logic_error);
    AC::InstallHost(host.Services());
    EXPECT_NO_THROW(AC::AddTandemEvents());
}

TEST(Host, InitialisesTheXMLPlatformFirst)
{
    ReferenceHost::Host host(ReferenceHost::Stations::Delivery::kByHand);
    xercesc::XMLPlatformUtils::Terminate();  // what the tests' main began
    AC::ACMessage message;
    EXPECT_THROW(AC::InstallHost(host.Services()), std::logic_error);
    EXPECT_THROW(AC::ACMessageDecoder::DecodeXMLString(u"<a/>", message), std::logic_error);
    EXPECT_THROW(AC::ACMessageEncoder::EncoderACMessage(message, u"a"), std::logic_error);
    xercesc::XMLPlatformUtils::Initialize();
    const ReferenceHost::Installation installation(host);
    EXPECT_TRUE(AC::ACMessageDecoder::DecodeXMLString(u"<a/>", message));
}

}  // namespace
