// A host and the library behind a recorder: what passes between them stays as it is, and what was recorded
// plays to the same effects.

#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IAssetConnectorPrivate.h"
#include "tests/support/RecordedHost.h"
#include "tests/support/SessionInputs.h"

#include <thread>

namespace {

using RecorderTest = RecordedHost;

/// A host that answers unlike that of a replay, and the second time unlike the first.
struct OwnLibrary : ReferenceHost::IngestLibrary
{
    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMediaInfo(
        const Ridge::MediaInfoArguments& arguments) override
    {
        auto other = arguments;
        other.aliasName = U("alias " + std::to_string(++count));
        return count % 7 == 0 ? nullptr : IngestLibrary::CreateMediaInfo(other);
    }
    UTF16String CreateCustomMetadataStr(const Ridge::CustomMetadata& /*metadata*/) override
    {
        return U("own \xC3\xA9 <block/>");
    }
    boost::shared_ptr<Ridge::SRProject> GetProject() override
    {
        return ++count % 3 == 0 ? nullptr : IngestLibrary::GetProject();
    }
    Ridge::ResultCode ReadXMPFromCache(const UTF16String& path, const Ridge::XMPText& holder,
                                       UTF16String& /*scratch*/) override
    {
        *holder = "<packet of='" + Narrow(path) + "'/>";
        return ++count % 2 == 0 ? 0 : -5;
    }
    bool PathSupportsXMP(const UTF16String& /*path*/) override { return ++count % 2 == 0; }
    UTF16String MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>& marker,
                                    tempora::FrameRate rate) override
    {
        return IngestLibrary::MarkerToPropertyXML(marker, rate) + u"<own/>";
    }
    int count = 0;
};

struct OwnFiles : ReferenceHost::Files
{
    bool ExistsOnDisk(const UTF16String& /*path*/) override { return ++count % 3 != 0; }
    bool IsDirectory(const UTF16String& /*path*/) override { return ++count % 3 == 0; }
    UTF16String ToNormalizedPath(const UTF16String& path) override { return u"//own/" + path; }
    UTF16String NormalizePathWithoutUNC(const UTF16String& path) override { return u"own:" + path; }
    int count = 0;
};

struct OwnTexts : ReferenceHost::Texts
{
    UTF16String Localize(const UTF16String& key) override { return u"[" + key + u" %1 %2]"; }
};

struct Way
{
    const char* name;
    bool masks;
    std::size_t fileBytes;
    bool hasDispatcher;
};

class OwnHost : public RecordedHost, public testing::WithParamInterface<Way>
{
};

TEST_P(OwnHost, Replays)
{
    options.masksContents = GetParam().masks;
    options.fileBytes = GetParam().fileBytes;
    options.filesKept = 100000;
    OwnLibrary ownLibrary;
    OwnFiles files;
    OwnTexts texts;
    Begin({host.GetPanelEvents(), host.GetStations(), ownLibrary, files, texts, host.GetMemory()});
    ALD::IAssetLibraryDispatcher* const given = GetParam().hasDispatcher ? &dispatcher : nullptr;
    std::size_t count = 0;
    library = recorder->CreateIngestGlintLibraryConnector(given);
    collection = recorder->CreateIngestMediaCollectionConnector(given);
    AC::AddTandemEvents();
    for (const auto& connector : {library, collection})
        for (const auto& input : SessionInputs(host, connector)) {
            host.GetPanelEvents().SetBrowserID("panel-" + std::to_string(count++ / 5 % 3));
            try {
                input();
            } catch (...) {  // a name that is none, of the DOM
            }
            if (count % 4 == 0)
                host.GetStations().DeliverPosted();
        }
    End();
    EXPECT_GE(ExpectReplays(), GetParam().fileBytes > 100000 ? 1U : 20U);
    EXPECT_EQ(troubles, std::vector<std::string>());
    EXPECT_EQ(CountOf("\n{\"ui\":true}") > 2, GetParam().fileBytes != 1);
}

INSTANTIATE_TEST_SUITE_P(Ways, OwnHost,
                         testing::Values(Way{"plain", false, 1U << 30U, true},
                                         Way{"masked", true, 1U << 30U, true},
                                         Way{"rotated", false, 5000, true}, Way{"eachAlone", false, 1, true},
                                         Way{"rotatedMasked", true, 5000, true},
                                         Way{"withoutDispatcher", false, 1, false}),
                         [](const auto& way) { return std::string(way.param.name); });

/// What a host throws, and what a recording says of it.
struct Thrown
{
    const char* name;
    boost::function<void()> act;
    const char* text;
};

class Exceptions : public RecordedHost, public testing::WithParamInterface<Thrown>
{
};

TEST_P(Exceptions, ReachTheCallerAndReplay)
{
    BeginWithConnectors();
    std::size_t caught = 0;
    const auto expectThrow = [&](const boost::function<void()>& action) {
        try {
            action();
        } catch (const std::exception& exception) {
            caught += std::string(exception.what()) == GetParam().text ? 1 : 0;
        } catch (int value) {
            caught += value == 42 ? 1 : 0;
        }
    };
    // The second call of the operation in its input, which reaches both connectors: the first exception ends
    // it.
    int calls = 0;
    dispatcher.act = [&] {
        if (++calls == 2)
            GetParam().act();
    };
    expectThrow([&] { Raise(AC::kPlexaEventType_TransferRequest, "<browserMessage/>"); });
    calls = 1;
    expectThrow([&] { Raise(AC::kPlexaEventType_TransferRequest, "<browserMessage/>"); });
    EXPECT_EQ(calls, 2);
    dispatcher.act.clear();
    panel->act = GetParam().act;
    expectThrow([&] { library->OnIngestStarted({}); });
    EXPECT_EQ(caught, 3U);
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("{\"exception\":"), 3U);
    EXPECT_EQ(CountOf("no operation of the host threw"), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Exceptions,
    testing::Values(Thrown{"standard", [] { throw std::runtime_error("own text"); }, "own text"},
                    Thrown{"odd", [] { throw std::logic_error("\xFF \"\\\n"); }, "\xFF \"\\\n"},
                    Thrown{"memory", [] { throw std::bad_alloc(); }, "std::bad_alloc"},
                    Thrown{"password", [] { throw std::runtime_error("ftpPassword='x' wrong"); },
                           "ftpPassword='x' wrong"},
                    Thrown{"foreign", [] { throw 42; }, ""}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(RecorderTest, BroadcastIsOneInputHoweverLongItTakes)
{
    BeginWithConnectors();
    AC::AddTandemEvents();
    dispatcher.act = [] { std::this_thread::sleep_for(std::chrono::milliseconds(700)); };
    // Another listener stands between the connectors when the library's is made anew.
    struct Listener : Kiln::Listener
    {
        ~Listener() override { EndSubscriptions(); }
        void OnStationMessage(const Kiln::Message& /*message*/) override { act(); }
        boost::function<void()> act;
    } between;
    between.act = [&] { recorder->Flush(); };
    library.Clear();
    host.GetStations().AddListener(Ridge::GetPlexaStationID(), between);
    library = recorder->CreateIngestGlintLibraryConnector(&dispatcher);
    host.GetPanelEvents().Raise(AC::kPlexaEventType_TransferRequest, U("<browserMessage/>"));
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("\n{\"panel\":"), 1U);
    EXPECT_EQ(CountOf("{\"dispatcher\":\"StartTransfer\""), 2U);
}

TEST_F(RecorderTest, HostCallsBackFromInside)
{
    BeginWithConnectors();
    int depth = 0;
    dispatcher.act = [&] {
        if (++depth == 1) {
            library->OnIngestStarted({});
            Raise(AC::kPlexaEventType_GetCurrentWorkMode, "<browserMessage/>");
            AC::Query<AC::IAssetConnectorPrivate>(library)->SetDispatcher(nullptr);
        }
        --depth;
    };
    Raise(AC::kPlexaEventType_ImportXMP, kImportRequest);
    dispatcher.act.clear();
    Raise(AC::kPlexaEventType_ImportXMP, kImportRequest);
    // What is posted inside an input may be delivered there.
    panel->act = [&] { host.GetStations().DeliverPosted(); };
    collection->OnIngestStarted({});
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("\n{\"station\":\"panel\""), 3U);
    EXPECT_EQ(CountOf("{\"withoutDispatcher\":[\"library\"]}"), 1U);
}

TEST_F(RecorderTest, ConnectorsMayGoInsideOfWhatReachesThem)
{
    Begin();
    MakeConnectors();
    dispatcher.act = [&] { library.Clear(); };
    Raise(AC::kPlexaEventType_TransferRequest, "<browserMessage/>");
    dispatcher.act.clear();
    library = recorder->CreateIngestGlintLibraryConnector(&dispatcher);
    panel->act = [&] { library.Clear(); };
    library.Get()->OnIngestStarted({});
    panel->act.clear();
    // Another thread drops one while a delivery is under way.
    library = recorder->CreateIngestGlintLibraryConnector(&dispatcher);
    std::thread other;
    dispatcher.act = [&] {
        if (!other.joinable())
            other = std::thread([&] { collection.Clear(); });
    };
    Raise(AC::kPlexaEventType_TransferRequest, "<browserMessage/>");
    other.join();
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("{\"destroyed\":"), 4U);
}

TEST_F(RecorderTest, ThreadsOverlap)
{
    options.fileBytes = 30000;
    options.filesKept = 1000;
    BeginWithConnectors();
    AC::AddTandemEvents();
    constexpr int kThreads = 4;
    constexpr int kRounds = 60;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                library->OnIngestStarted({});
                host.GetPanelEvents().Raise(AC::kPlexaEventType_ImportXMP, U(kImportRequest));
                collection->OnTransferProgress({}, {}, round);
                if (round % 16 == 0)
                    recorder->Flush();
            }
        });
    for (auto& each : threads)
        each.join();
    End();
    EXPECT_GT(ExpectReplays(), 3U);
    EXPECT_EQ(CountOf("\n{\"panel\":"), kThreads * kRounds * 1U);
    EXPECT_EQ(CountOf("\n{\"callback\":"), kThreads * kRounds * 2U);
    EXPECT_EQ(troubles, std::vector<std::string>());
}

TEST_F(RecorderTest, EveryFileBeginsWithItsState)
{
    options.fileBytes = 1;
    options.filesKept = 100;
    for (ALD::IAssetLibraryDispatcher* const given : {static_cast<ALD::IAssetLibraryDispatcher*>(&dispatcher),
                                                      static_cast<ALD::IAssetLibraryDispatcher*>(nullptr)}) {
        Begin();
        collection = recorder->CreateIngestMediaCollectionConnector(&dispatcher);
        library = recorder->CreateIngestGlintLibraryConnector(given);
        AC::AddTandemEvents();
        const auto read = [&] {
            library->OnReadXMPFinished({}, {}, 0, u"/a", {}, {}, {}, {}, {}, {}, {}, {}, {});
        };
        Raise(AC::kPlexaEventType_ReadXMPFromDisk, kReadRequest);
        read();
        Raise(AC::kPlexaEventType_ReadXMPFromDisk, "<browserMessage/>");  // of nothing
        Raise(AC::kPlexaEventType_ImportXMP, kImportRequest);
        read();
        Raise(AC::kPlexaEventType_ImportXMP, "<browserMessage/>");
        Raise(AC::kPlexaEventType_ReadXMPFromDisk, kReadRequest);
        AC::RemoveTandemEvents();
        library.Clear();
        collection->OnIngestStarted({});  // posts, and the next file knows nothing of it
        library = recorder->CreateIngestGlintLibraryConnector(given);
        read();
        host.GetStations().DeliverPosted();
        collection->OnIngestStarted({});
        host.GetStations().DeliverPosted();
        End();
        EXPECT_GT(ExpectReplays(), 10U);
        EXPECT_EQ(troubles, std::vector<std::string>());
    }
    EXPECT_EQ(CountOf("\n{\"host\":{\"readsFromDisk\":true}}"), 10U);
    EXPECT_EQ(CountOf("\n{\"ui\":true}"), 0U);  // what is delivered was posted in another file
}

TEST_F(RecorderTest, OtherRegistrationsAreNoneOfTheCatalogue)
{
    BeginWithConnectors();
    auto services = recorder->Services();
    const auto& events = AC::EventCatalogue();
    for (std::size_t at = AC::kRequestCount; at-- > 0;)
        services.panelEvents.AddTandemEventListener(*events[at].identifier, nullptr);
    host.GetPanelEvents().Raise(AC::kPlexaEventType_ExitApp, U("<browserMessage/>"));
    services.panelEvents.AddTandemEventListener(*events[0].identifier, nullptr);  // begins as a series does
    host.GetPanelEvents().Raise(AC::kPlexaEventType_GetCurrentWorkMode, U("<browserMessage/>"));
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("{\"dispatcher\":\"QueryCurrentWorkMode\""), 2U);
}

TEST_F(RecorderTest, OneConnectorOfAKindIsRecorded)
{
    Begin();
    MakeConnectors();
    Notifier second = recorder->CreateIngestGlintLibraryConnector(&dispatcher);
    Notifier past = AC::CreateIngestMediaCollectionConnector(&dispatcher);
    int calls = 0;
    dispatcher.act = [&] { ++calls; };
    Raise(AC::kPlexaEventType_GetCurrentWorkMode, "<browserMessage/>");
    EXPECT_EQ(calls, 4);
    second->OnIngestStarted({});
    EXPECT_EQ(troubles.size(), 1U);
    second.Clear();
    past.Clear();
    End();
    ExpectReplays();
}

TEST_F(RecorderTest, SaysThatItsServicesAreNotInstalled)
{
    recorder = std::make_unique<Recording::Recorder>(host.Services(), options);
    installation = std::make_unique<ReferenceHost::Installation>(host);
    MakeConnectors();
    library->OnIngestStarted({});
    EXPECT_EQ(troubles.size(), 1U);
    End();
    ExpectReplays();
}

/// Makes a media info only after something else has happened.
struct BusyLibrary : ReferenceHost::IngestLibrary
{
    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMasterClipMediaInfo(
        const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
        const Ridge::XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
        const UTF16String& lastModifyTime, const UTF16String& reservedText) override
    {
        act();
        return IngestLibrary::CreateMasterClipMediaInfo(guid, mediaPath, fileName, xmp, customMetadata,
                                                        createTime, lastModifyTime, reservedText);
    }
    boost::function<void()> act;
};

TEST_F(RecorderTest, DeliveriesComeInTheOrderOfTheFile)
{
    BusyLibrary busy;
    Begin({host.GetPanelEvents(), host.GetStations(), busy, host.GetFiles(), host.GetTexts(),
           host.GetMemory()});
    MakeConnectors();
    // Another thread begins later and posts before; what it posted is delivered before the other post, too.
    busy.act = [&] {
        std::thread([&] { collection->OnIngestStarted({1, 2}); }).join();
        host.GetStations().DeliverPosted();
        std::thread([&] { collection->OnIngestStarted({3, 4}); }).join();
    };
    collection->OnReadXMPFinished({}, {}, 0, u"/a", {}, {}, {}, {}, {}, {}, {}, {}, {});
    host.GetStations().DeliverPosted();
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("{\"deliver\":"), 3U);
}

TEST_F(RecorderTest, HalfASurrogatePairIsMarked)
{
    BeginWithConnectors();
    host.GetStations().BroadcastMessage(
        Ridge::GetPlexaStationID(),
        Ridge::TandemEvent(AC::kPlexaEventType_ImportXMP, u"<browserMessage>\xD800</browserMessage>"));
    End();
    EXPECT_EQ(CountOf("# half a surrogate pair"), 1U);
}

TEST_F(RecorderTest, BareReferencesAreWrapped)
{
    BeginWithConnectors();
    const auto broker = AC::BrokerOf(library);
    ASSERT_TRUE(broker);
    {
        const auto locked = AC::Query<Ridge::IIngestLibraryNotifier>(broker->Lock());
        const Notifier wrapped = recorder->Wrapped(locked);
        EXPECT_EQ(recorder->Wrapped(wrapped), wrapped);
        wrapped->OnIngestStarted({});
    }
    EXPECT_FALSE(recorder->Wrapped({}));
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("\n{\"callback\":"), 1U);
    EXPECT_EQ(CountOf("not inside an input"), 0U);
}

}  // namespace
