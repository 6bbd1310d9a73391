// What the host page and the traffic view see and do, without a network.

#include "desk/SavedSelection.h"
#include "session/SessionCheck.h"
#include "tests/desk/BridgeFixture.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using Json = nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kTask = "7a5c0001-0000-4000-8000-000000000001";
constexpr const char* kMessage = "3e550001-0000-4000-8000-000000000001";

std::string Transfer()
{
    return std::string("<browserMessage><taskID ID=\"") + kTask + "\"/><msgID ID=\"" + kMessage +
           "\"/><transferType>local</transferType><transferItemList><transferItem src=\"/a.mov\" "
           "dst=\"/b\"/></transferItemList></browserMessage>";
}

class ToolsTest : public BridgeFixture
{
protected:
    ToolsTest()
    {
        library.Say(PageFrames::Hello("library"));
        tool.Say(R"({"hello": {"kind": "desk"}})");
        host.FlushRecording();
        tool.Take();
    }

    /// \return The answer to a command.
    Json Do(const std::string& name, const Json& with)
    {
        tool.Say(Json{{"do", name}, {"with", with}, {"number", ++number}}.dump());
        for (const Json& frame : tool.Take())
            if (frame.value("done", 0) == number)
                return frame;
        return Json::object();
    }

    /// \return The entries that came.
    std::vector<Json> Entries()
    {
        host.FlushRecording();
        std::vector<Json> entries;
        for (const Json& frame : tool.Take())
            for (const Json& entry : frame.value("traffic", Json::array()))
                entries.push_back(entry);
        return entries;
    }

    /// \return Such as "panel by panel-1", "dispatcher of 4: held back".
    std::vector<std::string> Told()
    {
        std::vector<std::string> told;
        for (const Json& entry : Entries()) {
            if (entry["line"].contains("host"))
                continue;
            std::string text;
            for (const char* const key : {"panel", "callback", "dispatcher", "notification", "note"})
                if (entry["line"].contains(key))
                    text = key;
            if (entry.contains("by"))
                text += " by " + entry["by"].get<std::string>();
            if (entry.contains("cause"))
                text += " of " + std::to_string(entry["number"].get<int>() - entry["cause"].get<int>());
            for (const Json& mark : entry.value("marks", Json::array()))
                text += ": " + mark.get<std::string>();
            if (entry.contains("findings"))
                text += " with " + entry["findings"][0]["kind"].get<std::string>();
            told.push_back(text);
        }
        return told;
    }

    Json State()
    {
        host.FlushRecording();
        return traffic.WithOverview([](const Desk::Overview& overview) { return overview.State(); });
    }

    Page library{*bridge};
    Page tool{*bridge};
    int number = 0;
};

TEST_F(ToolsTest, SeesWhatPasses)
{
    library.Say(PageFrames::Raise("TransferRequest", Transfer(), 1));
    EXPECT_THAT(Told(), ElementsAre("panel by panel-1", "dispatcher of 1", "dispatcher of 2: held back"));
    library.Say(PageFrames::Raise("TransferRequest", "<browserMessage><transferItems/></browserMessage>", 2));
    EXPECT_THAT(Told().front(), HasSubstr("panel by panel-1 with "));
    library.Say(PageFrames::Raise("OpenAsset", "<browserMessage/>", 3));
    EXPECT_THAT(Told(), ElementsAre("panel by panel-1")) << "the host answers it";
    library.Say(PageFrames::Raise("SelectAssets", "<browserMessage/>", 4));
    EXPECT_THAT(Told(), ElementsAre("panel by panel-1: unhandled with not-handled"));
    library.Say(PageFrames::Raise("Nothing", "<browserMessage/>", 5));
    EXPECT_THAT(Told(), ElementsAre("note by panel-1: unhandled"));
    EXPECT_TRUE(Do("callback", {{"callback", "OnIngestStarted"}, {"args", {kTask}}})["value"].is_null());
    EXPECT_THAT(Told(), testing::Contains("notification of 1"));
    EXPECT_THAT(Do("notify", {{"identifier", "com.velmo.host.notification.AssetDirty"}})["value"]["xml"],
                HasSubstr("<hostNotification>"));
    EXPECT_THAT(Told(), ElementsAre("notification"));
}

TEST_F(ToolsTest, BearsWhatHasTooMuchToShow)
{
    const auto request = [this] {
        for (const Json& entry : Entries())
            if (entry["line"].contains("panel"))
                return entry;
        return Json();
    };
    std::string many, nested, end;
    for (int i = 0; i < 10000; ++i)
        many += "<a/>";
    for (int i = 0; i < 500; ++i) {
        nested += "<assetItemList><assetItem>";
        end += "</assetItem></assetItemList>";
    }
    library.Say(PageFrames::Raise("TransferRequest", "<browserMessage>" + many + "</browserMessage>", 1));
    Json entry = request();
    EXPECT_EQ(entry["findings"].size(), 100u);
    EXPECT_THAT(entry["marks"].dump(), HasSubstr("findings more"));
    library.Say(
        PageFrames::Raise("TriggerSaveAsset", "<browserMessage>" + nested + end + "</browserMessage>", 2));
    entry = request();
    EXPECT_THAT(Do("inspect", {{"number", entry["number"]}})["value"].dump(), HasSubstr("assetItemList"));
    EXPECT_EQ(Do("save", {{"numbers", {entry["number"]}}})["value"]["standsAlone"], true);
}

TEST_F(ToolsTest, GoesOnWhereItWas)
{
    library.Say(PageFrames::Raise("TransferRequest", Transfer(), 1));
    const std::vector<Json> entries = Entries();
    const auto last = entries.back()["number"].get<std::uint64_t>();
    for (const auto& [heard, first] : {std::pair(last - 1, last), std::pair(last + 1000, std::uint64_t{1})}) {
        Page again(*bridge);
        again.Say(Json{{"hello", {{"kind", "desk"}, {"heard", heard}}}}.dump());
        const std::vector<Json> frames = again.Take();
        EXPECT_EQ(frames[0]["welcome"], Json({{"kind", "desk"}, {"number", last}}));
        EXPECT_EQ(frames[1]["traffic"][0]["number"], first) << "and all of it to who heard of another desk";
        EXPECT_TRUE(frames.back().contains("state"));
    }
}

TEST_F(ToolsTest, FollowsTasksToTheirEnd)
{
    work.askers.emplace(kMessage, Desk::Origin{Desk::PanelKind::kLibrary, "panel-1"});
    library.Say(PageFrames::Raise("TransferRequest", Transfer(), 1));
    EXPECT_EQ(State()["tasks"], Json::parse(R"([{"taskID": "7a5c0001-0000-4000-8000-000000000001",
                               "msgID": "3e550001-0000-4000-8000-000000000001", "what": "TransferRequest",
                               "operation": "StartTransfer", "by": "panel-1", "percentage": null,
                               "isPaused": false}])"));
    Do("callback", {{"callback", "OnTransferProgress"}, {"args", {kTask, kMessage, 40}}});
    EXPECT_EQ(State()["tasks"][0]["percentage"], 40);
    Do("callback", {{"callback", "OnIngestStarted"}, {"args", {kMessage}}});
    Do("callback", {{"callback", "OnIngestPaused"}, {"args", {{kMessage}}}});
    EXPECT_EQ(State()["tasks"][1]["isPaused"], true);
    Do("callback", {{"callback", "OnTransferStatus"}, {"args", {kTask, kMessage, 0, Json::array()}}});
    Do("callback", {{"callback", "OnIngestFinished"}, {"args", {kMessage}}});
    EXPECT_EQ(State()["tasks"], Json::array());
    EXPECT_THAT(library.TakeNotifications(), testing::Contains("TransferStatus to panel-1"));
}

TEST_F(ToolsTest, SaysWhyACommandFails)
{
    const struct
    {
        const char* name;
        Json with;
        const char* error;
    } rows[] = {
        {"nothing", Json::object(), "there is no command nothing"},
        {"callback", Json::object(), "callback is missing"},
        {"callback", {{"callback", 1}}, "callback is of the wrong type"},
        {"callback", {{"callback", "OnNothing"}}, "there is no callback OnNothing"},
        {"callback", {{"callback", "OnIngestStarted"}, {"args", {1}}}, "args: [0]: expected a string"},
        {"callback", {{"callback", "OnIngestStarted"}, {"args", {kTask}}, {"to", "x"}}, "library or"},
        {"notify", {{"identifier", "x"}}, "x is no notification"},
        {"notify",
         {{"identifier", "com.velmo.host.notification.AssetDirty"}, {"record", {{"colour", 1}}}},
         "colour"},
        {"step", Json::object(), "no session is played"},
        {"pace", {{"speed", 0}}, "above 0"},
        {"faults", {{"browserID", "panel-9"}, {"percent", 5}}, "no panel panel-9"},
        {"faults", {{"browserID", "panel-1"}, {"percent", 101}}, "from 0 to 100"},
        {"faults", {{"browserID", "panel-1"}, {"percent", 5}, {"kinds", {"fire"}}}, "no fault fire"},
        {"faults", {{"browserID", "panel-1"}, {"percent", 4294967297}}, "out of range"},
        {"faults", {{"browserID", "panel-1"}, {"percent", 1.5}}, "wrong type"},
        {"faults", {{"browserID", "panel-1"}, {"percent", true}}, "wrong type"},
        {"faults", {{"browserID", "panel-1"}, {"percent", 5}, {"seed", 4294967296}}, "out of range"},
        {"inspect", {{"number", 1}}, "no request"},
        {"inspect", {{"number", -1}}, "out of range"},
        {"save", {{"numbers", {1, 1.5}}}, "wrong type"},
        {"save", {{"numbers", {999999}}}, "none of these"},
        {"save", {{"numbers", "all"}}, "wrong type"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(Do(row.name, row.with).value("error", ""), HasSubstr(row.error)) << row.name << row.with;
}

TEST_F(ToolsTest, ShowsWhatARequestDecodesTo)
{
    library.Say(PageFrames::Raise("TransferRequest", Transfer(), 1));
    library.Say(PageFrames::Raise("TransferRequest", "<browserMessage>", 2));
    std::vector<int> requests;
    for (const Json& entry : Entries())
        if (entry["line"].contains("panel"))
            requests.push_back(entry["number"]);
    EXPECT_EQ(Do("inspect", {{"number", requests[0]}})["value"]["record"]["transferItemList"][0]["src"],
              "/a.mov");
    EXPECT_THAT(Do("inspect", {{"number", requests[1]}})["value"].value("problem", ""), HasSubstr("line 1"));
}

TEST_F(ToolsTest, EndsUnlessAPanelRefuses)
{
    Do("exit", Json::object());
    library.Say(
        PageFrames::Raise("ExitApp", "<browserMessage><allowExit>false</allowExit></browserMessage>", 1));
    timer.Pass();
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(tools.ExitState(), Json({{"refusedBy", "panel-1"}}));
    Do("exit", Json::object());
    EXPECT_EQ(tools.ExitState(), Json({{"isAsked", true}})) << "an old refusal does not count";
    Do("exit", Json::object());
    timer.tasks.front()();
    EXPECT_EQ(ends, 0) << "who is asked again has the whole time again";
    timer.Pass();
    EXPECT_EQ(ends, 1);
    Do("exit", Json::object());
    {
        Desk::Tools gone{Desk::Tools::Needs{host, timer, traffic, {}, [] {}, [this] { ++ends; }, {}}};
        gone.Do(tool.link, {"exit", Json::object(), 1});
        timer.tasks.erase(timer.tasks.begin());
    }
    timer.Pass();
    EXPECT_EQ(ends, 1) << "nothing is left of tools that are gone";
    EXPECT_THAT(library.TakeNotifications(),
                testing::Each(testing::AnyOf("AppExit to none", "AppExit to MediaCollection")));
}

/// What a page hears when each frame of three meets the fault, at once and later.
TEST_F(ToolsTest, DisturbsAsAskedFor)
{
    const struct
    {
        const char* fault;
        std::vector<int> atOnce, later;
        int code;
    } rows[] = {
        {"drop", {}, {}, 0},          {"double", {1, 1, 2, 2, 3, 3}, {}, 0},
        {"delay", {}, {1, 2, 3}, 0},  {"reorder", {2, 1}, {3}, 0},
        {"garble", {1, 2, 3}, {}, 0}, {"disconnect", {}, {}, Desk::Closing::kFault},
    };
    for (const auto& row : rows) {
        const auto own = MakeBridge(SmallLimits());
        Page page(*own);
        page.Say(PageFrames::Hello("library"));
        Desk::Faults::Settings settings{7, 100, {*Desk::FaultOf(row.fault)}};
        EXPECT_TRUE(own->Disturb("panel-1", settings));
        page.Take();
        const auto heard = [&] {
            std::vector<int> numbers;
            for (const Json& frame : page.Take())
                if (frame.contains("notify")) {
                    numbers.push_back(frame["number"]);
                    EXPECT_EQ(frame["xml"] != "<n>text</n>", row.fault == std::string("garble"));
                }
            return numbers;
        };
        for (int i = 0; i < 3; ++i)
            own->OnNotification("news", "<n>text</n>");
        EXPECT_EQ(heard(), row.atOnce) << row.fault;
        timer.Pass();
        EXPECT_EQ(heard(), row.later) << row.fault;
        EXPECT_EQ(page.Code(), row.code) << row.fault;
        settings.percent = 0;
        EXPECT_EQ(own->Disturb("panel-1", settings), row.code == 0 || page.Code() != 0);
    }
}

TEST_F(ToolsTest, DisturbsRequestsTheSameWayEachTime)
{
    std::vector<std::vector<std::string>> runs;
    for (int run = 0; run < 2; ++run) {
        const auto own = MakeBridge(SmallLimits());
        Page page(*own);
        page.Say(PageFrames::Hello("library"));
        own->Disturb("panel-1", {3, 50, {Desk::Fault::kDrop, Desk::Fault::kGarble, Desk::Fault::kDouble}});
        work.Clear();
        for (int i = 1; i <= 30; ++i)
            page.Say(PageFrames::Raise("TransferRequest", Transfer(), static_cast<std::uint64_t>(i)));
        runs.push_back(work.Lines());
    }
    EXPECT_EQ(runs[0], runs[1]);
    EXPECT_LT(runs[0].size(), 30u);
    EXPECT_GT(runs[0].size(), 0u);
}

TEST_F(ToolsTest, DisturbsRequestsAndLosesNone)
{
    const struct
    {
        const char* fault;
        int raised, atOnce, later, count;
    } rows[] = {{"reorder", 3, 2, 1, 2}, {"delay", 3, 0, 3, 1}, {"double", 3, 3, 0, 3}, {"drop", 3, 0, 0, 3}};
    for (const auto& row : rows) {
        const auto own = MakeBridge(SmallLimits());
        Page page(*own);
        page.Say(PageFrames::Hello("library"));
        EXPECT_TRUE(own->Disturb("panel-1", {7, 100, {*Desk::FaultOf(row.fault)}}));
        work.Clear();
        for (int i = 1; i <= row.raised; ++i)
            page.Say(PageFrames::Raise("TransferRequest", Transfer(), static_cast<std::uint64_t>(i)));
        EXPECT_EQ(work.Lines().size(), row.atOnce) << row.fault;
        work.throwsNext = row.later > 1;
        if (work.throwsNext)
            EXPECT_THROW(timer.Pass(), std::runtime_error);
        else
            timer.Pass();
        EXPECT_EQ(work.Lines().size(), row.atOnce + row.later) << row.fault;
        own->SendState();
        EXPECT_EQ(page.Take().back()["state"]["panels"][0]["faults"]["count"], row.count) << row.fault;
    }
}

/// Keeps what a saved selection says until no host is installed any more.
class SavedTest : public ::testing::Test
{
protected:
    struct Fixture : ToolsTest
    {
        void TestBody() override {}
        using ToolsTest::Do;
        using ToolsTest::Entries;
        using ToolsTest::library;
        using ToolsTest::traffic;
    };

    static std::string Difference(const std::string& session)
    {
        std::istringstream file(session);
        Session::SessionCheck check;
        Session::PlaySession(file, Session::Style::kSession, check);
        const auto& found = check.FirstDifference();
        return found ? "line " + std::to_string(found->line) + ": " + found->expected + " / " + found->actual
                     : "";
    }
};

TEST_F(SavedTest, SelectionsStandAlone)
{
    std::string session;
    std::string partly;
    {
        Fixture desk;
        desk.library.Say(PageFrames::Raise("TransferRequest", Transfer(), 1));
        desk.Do("callback", {{"callback", "OnIngestStarted"}, {"args", {kTask}}});
        desk.Do("callback", {{"callback", "OnTransferProgress"}, {"args", {kTask, kMessage, 40}}});
        std::vector<std::uint64_t> callbacks;
        std::vector<std::uint64_t> all;
        for (const Json& entry : desk.Entries()) {
            if (!entry.contains("cause"))
                all.push_back(entry["number"]);
            if (entry["line"].value("callback", "") == "OnTransferProgress")
                callbacks.push_back(entry["number"]);
        }
        partly = Desk::SessionOf(desk.traffic.Passages(callbacks));
        session = Desk::SessionOf(desk.traffic.Passages(all));
        EXPECT_EQ(desk.Do("save", {{"numbers", callbacks}})["value"]["text"], partly);
        EXPECT_EQ(desk.Do("save", {{"numbers", all}})["value"]["why"], "line 1: no");
    }
    EXPECT_EQ(Difference(session), "");
    EXPECT_THAT(session, HasSubstr("StartTransfer"));
    EXPECT_EQ(Difference(partly), "");
    EXPECT_THAT(partly, HasSubstr("TransferProgress"));
}

}  // namespace
