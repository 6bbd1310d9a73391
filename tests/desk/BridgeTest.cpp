// What passes between pages and host, without a network.

#include "desk/Bridge.h"
#include "desk/Link.h"
#include "tests/desk/BridgeFixture.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using BridgeTest = BridgeFixture;
using Desk::Closing;
using Json = nlohmann::json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(BridgeTest, WelcomesWithWhatThePageMustKnow)
{
    TellNews(2);
    Page page(*bridge);
    page.Say(PageFrames::Hello("mediaCollection"));
    std::vector<Json> frames = page.Take();
    ASSERT_EQ(frames.size(), 2u);
    const std::string session = frames[0]["welcome"].value("session", "");
    EXPECT_EQ(session.size(), 36u);
    frames[0]["welcome"].erase("session");
    EXPECT_EQ(frames[0], Json::parse(R"({"welcome": {"browserID": "panel-1", "resumed": false, "number": 2,
                                         "heard": 0, "handles": ["com.velmo.browser.event.OpenAsset"]}})"));
    EXPECT_EQ(
        frames[1],
        Json::parse(
            R"({"state": {"panels": [{"browserID": "panel-1", "kind": "mediaCollection", "faults": null}]}})"));
    EXPECT_TRUE(page.link->TakeReadOn());
}

TEST_F(BridgeTest, RefusesWhatMakesNoSense)
{
    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    for (const std::string& text :
         {std::string("{"), std::string("[]"), std::string("1"), std::string("\"\xff\""),
          "{\"a\":" + deep + "}", std::string(R"({"hello": 1})"),
          std::string(R"({"hello": {"kind": "other"}})"),
          std::string(R"({"hello": {"kind": "library", "session": "s"}})"),
          std::string(R"({"hello": {"kind": "library", "session": "s", "heard": -1}})"),
          PageFrames::Raise("ExitApp", "<x/>", 1)}) {
        Page page(*bridge);
        page.Say(text);
        EXPECT_EQ(page.Code(), Closing::kPolicy) << text.substr(0, 80);
    }
    for (const char* const text :
         {R"({"hello": {"kind": "library"}})", R"({"raise": "x", "xml": "<x/>"})",
          R"({"raise": "x", "xml": "<x/>", "number": 0})", R"({"raise": "x", "xml": "<x/>", "number": "1"})",
          R"({"raise": "x", "xml": "<x/>", "number": 9007199254740992})", R"({"raise": "x", "number": 1})",
          R"({"raise": 1, "xml": "<x/>", "number": 1})"}) {
        Page page(*bridge);
        page.Say(PageFrames::Hello("library"));
        page.Say(text);
        EXPECT_EQ(page.Code(), Closing::kPolicy) << text;
        page.Say(PageFrames::Raise("TransferRequest", kThing, 2));
    }
    EXPECT_THAT(work.Lines(), IsEmpty()) << "nothing more is heard of such a page";
}

TEST_F(BridgeTest, IgnoresWhatItDoesNotKnow)
{
    Page page(*bridge);
    page.Say(R"({"hello": {"kind": "library", "more": [1]}, "more": {}})");
    page.Say(R"({"later": 1})");
    page.Say(R"({"raise": "com.other.thing", "xml": "<x/>", "number": 4, "more": null})");
    EXPECT_EQ(page.Code(), 0);
    EXPECT_EQ(page.Take().back(), Json::parse(R"({"heard": 4})"));
}

TEST_F(BridgeTest, TakesEachRequestOnce)
{
    Page page(*bridge);
    const std::string session = page.SayHello(PageFrames::Hello("library"))["session"];
    page.Say(PageFrames::Raise("TransferRequest", kThing, 7));
    page.Say(PageFrames::Raise("TransferRequest", kThing, 7));
    page.Say(PageFrames::Raise("TransferRequest", kThing, 6));
    bridge->OnGone(page.link, false);
    Page again(*bridge);
    EXPECT_EQ(again.SayHello(PageFrames::HelloAgain("library", session, 0))["heard"], 7);
    again.Say(PageFrames::Raise("TransferRequest", kThing, 7));
    EXPECT_THAT(work.Lines(), ElementsAre("library StartTransfer for panel-1"));
    again.Say(PageFrames::Raise("TransferRequest", kThing, 8));
    EXPECT_EQ(work.Lines().size(), 2u);
}

struct Resumption
{
    const char* name;
    const char* kind;
    bool isSession;
    std::uint64_t heard;
    bool isResumed;
    std::vector<std::uint64_t> numbers;
};

/// Five notifications were told, of which the last three are kept.
TEST_F(BridgeTest, GivesPagesThatComeAgainWhatTheyMissed)
{
    for (const Resumption& row : {Resumption{"nothing missed", "library", true, 5, true, {}},
                                  {"one missed", "library", true, 4, true, {5}},
                                  {"all that is kept", "library", true, 2, true, {3, 4, 5}},
                                  {"one too many", "library", true, 1, false, {}},
                                  {"of another host", "library", true, 6, false, {}},
                                  {"another session", "library", false, 5, false, {}},
                                  {"another kind", "mediaCollection", true, 5, false, {}}}) {
        const auto own = MakeBridge(SmallLimits());
        Page page(*own);
        const std::string session = page.SayHello(PageFrames::Hello("library"))["session"];
        for (int i = 0; i < 5; ++i)
            own->OnNotification("news", "<n/>");
        own->OnGone(page.link, false);

        Page again(*own);
        again.Say(PageFrames::HelloAgain(row.kind, row.isSession ? session : "s", row.heard));
        std::vector<std::uint64_t> numbers;
        Json welcome;
        for (const Json& frame : again.Take()) {
            if (frame.contains("welcome"))
                welcome = frame["welcome"];
            if (frame.contains("notify"))
                numbers.push_back(frame["number"]);
        }
        EXPECT_EQ(welcome["resumed"], row.isResumed) << row.name;
        EXPECT_EQ(welcome["session"] == session, row.isResumed) << row.name;
        EXPECT_EQ(welcome["browserID"], row.isResumed ? "panel-1" : "panel-2") << row.name;
        EXPECT_EQ(welcome["number"], row.isResumed ? row.heard : 5) << row.name;
        EXPECT_EQ(numbers, row.numbers) << row.name;
    }
}

TEST_F(BridgeTest, KeepsNoMoreThanItsBytes)
{
    Desk::Bridge::Limits limits;
    limits.log.mostBytes = 1000;
    const auto own = MakeBridge(limits);
    Page page(*own);
    const std::string session = page.SayHello(PageFrames::Hello("library"))["session"];
    own->OnNotification("news", std::string(600, 'x'));
    own->OnNotification("news", std::string(600, 'x'));
    Page kept(*own);
    EXPECT_EQ(kept.SayHello(PageFrames::HelloAgain("library", session, 1))["resumed"], true);
    Page lost(*own);
    EXPECT_EQ(lost.SayHello(PageFrames::HelloAgain("library", session, 0))["resumed"], false);
}

TEST_F(BridgeTest, EndsTheOldConnectionOfAPageThatComesAgain)
{
    Page page(*bridge);
    const std::string session = page.SayHello(PageFrames::Hello("library"))["session"];
    Page again(*bridge);
    again.SayHello(PageFrames::HelloAgain("library", session, 0));
    EXPECT_EQ(page.Code(), Closing::kElsewhere);
    bridge->OnGone(page.link, true);
    TellNews(1);
    EXPECT_THAT(again.TakeNotifications(), ElementsAre("news to none"));
}

/// Two may be away.
TEST_F(BridgeTest, ForgetsPagesThatEndAndTheOldestThatAreAway)
{
    std::vector<std::string> sessions;
    const auto open = [this, &sessions] {
        Page page(*bridge);
        sessions.push_back(page.SayHello(PageFrames::Hello("library"))["session"]);
        return page;
    };
    const auto comesAgain = [this, &sessions](std::size_t at) -> bool {
        Page page(*bridge);
        return page.SayHello(PageFrames::HelloAgain("library", sessions.at(at), 0))["resumed"];
    };
    bridge->OnGone(open().link, false);
    bridge->OnGone(open().link, false);
    EXPECT_TRUE(comesAgain(0)) << "and stays";
    bridge->OnGone(open().link, false);
    bridge->OnGone(open().link, false);
    bridge->OnGone(open().link, true);
    EXPECT_TRUE(comesAgain(2));
    EXPECT_TRUE(comesAgain(3));
    EXPECT_FALSE(comesAgain(1)) << "the oldest";
    EXPECT_FALSE(comesAgain(4)) << "it ended";
}

TEST_F(BridgeTest, DropsAPageThatDoesNotReadAndNoOther)
{
    Desk::Link::Limits limits;
    limits.mostFrames = 4;
    Page slow(*bridge, limits);
    Page other(*bridge);
    slow.Say(PageFrames::Hello("library"));  // welcome and state, and the state once more
    other.Say(PageFrames::Hello("library"));
    other.Take();
    TellNews(1);
    EXPECT_EQ(slow.Code(), 0);
    TellNews(1);
    EXPECT_EQ(slow.Code(), Closing::kTooSlow);
    EXPECT_EQ(other.TakeNotifications().size(), 2u);
}

TEST_F(BridgeTest, TellsOnlyWhatHasChanged)
{
    Page page(*bridge);
    const std::string session = page.SayHello(PageFrames::Hello("library"))["session"];
    bridge->SendState();
    EXPECT_THAT(page.Take(), IsEmpty());
    Page again(*bridge);
    again.Say(PageFrames::HelloAgain("library", session, 0));
    EXPECT_TRUE(again.Take().back().contains("state")) << "which is the same, but new to this connection";
}

TEST(Link, HoldsSoManyBytes)
{
    Desk::Link::Limits limits;
    limits.mostBytes = 10;
    const auto frame = [](std::size_t size) { return boost::make_shared<const std::string>(size, 'x'); };
    Desk::Link link(limits);
    for (const std::size_t size : {100u, 8u, 8u}) {
        link.Send(frame(size));
        EXPECT_EQ(link.TakeFrame()->size(), size);
    }
    link.Send(frame(9));
    link.Send(frame(100));
    EXPECT_FALSE(link.IsClosed()) << "the last one may be long";
    link.Send(frame(1));
    EXPECT_EQ(link.TakeFrame(), nullptr);
    link.Close(Closing::kPolicy, "");
    EXPECT_EQ(link.GetClosing()->code, Closing::kTooSlow) << "the first reason counts";
}

TEST_F(BridgeTest, WorksOnBehindWorkThatThrows)
{
    Page page(*bridge);
    page.Say(PageFrames::Hello("library"));
    page.link->TakeReadOn();
    work.throwsNext = true;
    EXPECT_THROW(page.Say(PageFrames::Raise("TransferRequest", kThing, 1)), std::runtime_error);
    EXPECT_TRUE(page.link->TakeReadOn());
    EXPECT_EQ(host.Asker(), nullptr);
    page.Say(PageFrames::Raise("TransferRequest", kThing, 2));
    EXPECT_EQ(work.Lines().size(), 2u);
    EXPECT_EQ(page.Take().back(), Json::parse(R"({"heard": 2})"));
}

}  // namespace
