// Connections of pages: what breaks their rules, what does not read, and what ends.

#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "tests/desk/ServerFixture.h"

#include <cstdint>
#include <future>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Desk::Closing;
using Json = nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using SocketTest = ServerFixture;

TEST_F(SocketTest, EndsConnectionsThatDoNotComeToThePoint)
{
    // Each with a desk of its own, so that a slow machine meets no limit that it should not.
    options.server.close = kSoon;
    options.server.request = kSoon;
    Open();
    RawClient silent(desk->Port());
    EXPECT_TRUE(silent.ReadToEnd());
    RawClient half(desk->Port());
    half.Send("GET / HTTP/1.1\r\nHo");
    EXPECT_TRUE(half.ReadToEnd());
    desk.reset();

    options.server.request = Desk::ServerLimits().request;
    options.server.hello = kSoon;
    Open();
    RawClient noHello = OpenSocket();
    EXPECT_EQ(noHello.ReadToClose(), Closing::kPolicy);
    desk.reset();

    options.server.hello = Desk::ServerLimits().hello;
    options.server.idle = 5 * kSoon;
    Open();
    RawClient halfFrame = OpenPanel();
    halfFrame.Send(RawClient::MakeFrame(kText, "{", 1000));
    EXPECT_TRUE(halfFrame.ReadToEnd());
    ExpectItWorks();
}

TEST_F(SocketTest, HoldsNoMoreConnectionsThanItsLimits)
{
    options.server.mostVisitors = 3;
    options.server.mostPages = 2;
    Open();
    {
        std::vector<RawClient> panels;
        panels.push_back(OpenPanel());
        panels.push_back(OpenPanel());
        EXPECT_EQ(Ask(Head("/socket", {"GET", {}, Upgrade() + Origin() + Cookie()})).status, 503);
        std::vector<RawClient> visitors;
        for (int i = 0; i < 3; ++i) {
            visitors.emplace_back(desk->Port());
            visitors.back().Send(Head("/"));
            EXPECT_EQ(visitors.back().ReadAnswer().status, 200);
        }
        RawClient tooMany(desk->Port());
        EXPECT_TRUE(tooMany.ReadToEnd());
    }
}

TEST_F(SocketTest, ClosesOnFramesThatBreakTheRules)
{
    options.server.largestFrame = 10000;
    options.server.rate = {20, 0.001};
    Open();
    const std::string unmasked = {'\x81', '\x01', 'x'};
    std::string flood, pings;
    for (int i = 0; i < 100; ++i) {
        flood += RawClient::MakeFrame(kText, "{}");
        pings += RawClient::MakeFrame(kPing, "");
    }
    struct Row
    {
        const char* name;
        std::string bytes;
        int code;
    };
    for (const Row& row : {
             Row{"too large", RawClient::MakeFrame(kText, std::string(10001, ' ')), 1009},
             Row{"says that it is too large", RawClient::MakeFrame(kText, "", 1ull << 40), 1009},
             Row{"a length without end", RawClient::MakeFrame(kText, "", ~0ull), 1009},
             Row{"too large in pieces",
                 std::string("\x01\x80\0\0\0\0", 6) + RawClient::MakeFrame(0, std::string(10001, ' ')), 1009},
             Row{"no UTF-8", RawClient::MakeFrame(kText, "{\"a\": \"\xc3\x28\"}"), 1007},
             Row{"half a character", RawClient::MakeFrame(kText, "\xf0\x9f\x98"), 1007},
             Row{"a surrogate", RawClient::MakeFrame(kText, "\xed\xa0\x80"), 1007},
             Row{"binary", RawClient::MakeFrame(kBinary, "{}"), Closing::kTextOnly},
             Row{"no mask", unmasked, 1002},
             Row{"an unknown kind", RawClient::MakeFrame(5, ""), 1002},
             Row{"a long ping", RawClient::MakeFrame(kPing, std::string(126, 'x')), 1002},
             Row{"no JSON", RawClient::MakeFrame(kText, "<x/>"), Closing::kPolicy},
             Row{"a flood", flood, Closing::kPolicy},
             Row{"a flood of pings", pings, Closing::kPolicy},
         }) {
        RawClient panel = OpenPanel();
        panel.Send(row.bytes);
        EXPECT_EQ(panel.ReadToClose(), row.code) << row.name;
    }
    ExpectItWorks();
}

TEST_F(SocketTest, APageThatDoesNotReadHoldsUpNobody)
{
    options.server.link.mostBytes = std::size_t{5} << 20;  // two of the frames below
    options.server.close = kSoon;
    Open();
    const RawClient slow = OpenPanel();
    RawClient other = OpenPanel();
    const std::string longText(std::size_t{1} << 20, 'x');
    for (int i = 1; i <= 20; ++i) {
        desk->Post([&longText](Desk::Host& host) {
            host.Callback("OnTranscodeStatus", {kID, kID, -1, longText, longText}, Desk::PanelKind::kLibrary);
        });
        ASSERT_EQ(ReadWith(other, "notify").value("number", 0), i);
    }
    const RawClient third = OpenPanel();
    EXPECT_TRUE(ReadUntilPanels(other, 2)) << "the slow page was dropped";
}

TEST_F(SocketTest, HostileTextsDoNothing)
{
    Open();
    RawClient panel = OpenPanel();
    std::string nested, bomb = "<!DOCTYPE a [<!ENTITY x0 \"x\">";
    for (int i = 0; i < 100000; ++i)
        nested += "<a>";
    for (int i = 1; i < 40; ++i)
        bomb += "<!ENTITY x" + std::to_string(i) + " \"&x" + std::to_string(i - 1) + ";&x" +
                std::to_string(i - 1) + ";\">";
    std::string attributes = "<browserMessage";
    for (int i = 0; i < 20000; ++i)
        attributes += " a" + std::to_string(i) + "=\"\"";
    std::uint64_t number = 0;
    for (const std::string& xml :
         {std::string(), std::string("<"), std::string("<browserMessage>"), std::string(1000, '\0'), nested,
          bomb + "]><browserMessage>&x39;</browserMessage>", attributes + "/>",
          std::string("<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><browserMessage/>"),
          std::string("<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///dev/zero\">]><browserMessage>&x;"
                      "</browserMessage>"),
          std::string("<browserMessage>&x;</browserMessage>"), std::string("\xef\xbf\xbf"),
          std::string("<browserMessage>\x01</browserMessage>")}) {
        Say(panel, PageFrames::Raise("TransferRequest", xml, ++number));
        EXPECT_EQ(ReadWith(panel, "heard").value("heard", 0u), number) << xml.substr(0, 80);
    }
    Say(panel, PageFrames::Raise("TransferRequest", "<browserMessage/>", ++number));
    EXPECT_EQ(ReadWith(panel, "heard").value("heard", 0u), number);
    desk->Run(
        [this](Desk::Host&) { EXPECT_THAT(work.Lines(), ElementsAre("library StartTransfer for panel-1")); });
}

TEST_F(SocketTest, APageThatEndsDoesNotGoOn)
{
    for (const bool ends : {false, true}) {
        Open();
        RawClient witness = OpenPanel();
        std::string session;
        {
            RawClient panel = OpenSocket();
            Say(panel, PageFrames::Hello("library"));
            session = ReadWith(panel, "welcome")["welcome"]["session"];
            panel.Send(ends ? RawClient::MakeFrame(8, "\x03\xe8") : "");
            EXPECT_EQ(ends ? panel.ReadToClose() : 1000, 1000);
        }
        EXPECT_TRUE(ReadUntilPanels(witness, 1));
        RawClient again = OpenSocket();
        Say(again, PageFrames::HelloAgain("library", session, 0));
        EXPECT_EQ(ReadWith(again, "welcome")["welcome"]["resumed"], !ends);
    }
}

/// Posts one more message from inside the first delivery.
class Repeater : public Kiln::Listener
{
public:
    Repeater() { Kiln::StationUtils::AddListener(AC::GetMCAssetConnectorStation(), this); }
    ~Repeater() override { EndSubscriptions(); }

    std::future<std::thread::id> Second() { return mSecond.get_future(); }

private:
    void OnStationMessage(const Kiln::Message& message) override
    {
        if (++mCount == 1)
            Kiln::StationUtils::PostMessageToUIThread(AC::GetMCAssetConnectorStation(), message, true);
        else
            mSecond.set_value(std::this_thread::get_id());
    }

    int mCount = 0;
    std::promise<std::thread::id> mSecond;
};

TEST_F(SocketTest, PostedMessagesComeOnTheHostsThread)
{
    Open();
    std::optional<Repeater> repeater;
    std::future<std::thread::id> second;
    std::thread::id thread;
    desk->Run([&](Desk::Host& host) {
        thread = std::this_thread::get_id();
        second = repeater.emplace().Second();
        host.Callback("OnIngestStarted", {kID}, std::nullopt);
    });
    ASSERT_EQ(second.wait_for(10s), std::future_status::ready);
    EXPECT_EQ(second.get(), thread);
    desk->Run([&](Desk::Host&) { repeater.reset(); });
}

TEST_F(SocketTest, EndsWithAWord)
{
    options.server.close = kSoon;
    Open();
    RawClient panel = OpenPanel();
    const RawClient neverReads = OpenPanel();
    RawClient visitor(desk->Port());
    const std::uint16_t port = desk->Port();
    desk.reset();
    EXPECT_EQ(panel.ReadToClose(), Closing::kGoingAway);
    EXPECT_TRUE(visitor.ReadToEnd());
    EXPECT_THROW(RawClient{port}, std::runtime_error);
}

}  // namespace
