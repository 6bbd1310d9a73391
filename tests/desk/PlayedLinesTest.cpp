// How a session goes on, and ends.

#include "session/SessionFile.h"
#include "tests/desk/Played.h"

#include <gmock/gmock.h>

#include <future>

namespace {

using Session::Json;
using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using PlayedLinesTest = PlayedHostTest;

std::string NewsAt(int us)
{
    return "{\"us\": " + std::to_string(us) + ", " + kNews.substr(1);
}

TEST_F(PlayedLinesTest, KeepsThePaceOfTheSession)
{
    const auto told = [this](int ms) {
        timer.Pass(milliseconds(ms));
        return std::exchange(panel->told, {}).size();
    };
    const auto set = [this](std::optional<double> speed, std::optional<bool> isStepping) {
        host->GetPlayback()->SetPace(speed, isStepping);
    };
    std::string close;
    for (int i = 1; i <= 10; ++i)
        close += NewsAt(6000000 + i * 100);
    Play(R"({"create": "library"})"
         "\n" +
         NewsAt(0) + NewsAt(1000000) + NewsAt(2000000) + NewsAt(6000000) + close + NewsAt(5000000) + kNews +
         R"({"host": {"paths": {}}})");
    EXPECT_EQ(told(299), 0u);
    EXPECT_EQ(told(1), 1u);
    EXPECT_EQ(told(999), 0u);
    EXPECT_EQ(told(1), 1u);
    EXPECT_EQ(told(400), 0u);
    set(2, {});
    EXPECT_EQ(told(299), 0u) << "a change holds for what is left";
    EXPECT_EQ(told(1), 1u);
    EXPECT_EQ(told(1000), 0u);
    set({}, true);
    EXPECT_EQ(told(100000), 0u);
    set(4, {});
    EXPECT_EQ(told(100000), 0u);
    set({}, false);
    EXPECT_EQ(told(499), 0u);
    EXPECT_EQ(told(1), 1u);
    set(1, {});
    EXPECT_EQ(told(1), 11u) << "less than milliseconds do not add up, and time does not go back";
    EXPECT_EQ(told(300), 1u);
    EXPECT_EQ(State()["isEnded"], true) << "host lines take no time";
    set(-1, {});
    EXPECT_GT(State()["speed"], 0);
}

TEST_F(PlayedLinesTest, PlaysStepByStep)
{
    Play("# A day\n# in two lines.\n#\n" + kStart + "# desk: {}\n# News.\n" + kNews +
             PanelLine("RenameRequest", Message(1, kItem)) + kNews,
         true);
    EXPECT_EQ(State(), Json::parse(R"({"file": "day.jsonl", "line": 5, "lines": 11, "waitsFor": null,
        "next": "create library", "comment": "A day\nin two lines.", "hasBegun": true, "isEnded": false, "isStepping": true,
        "speed": 1.0, "problem": null})"));
    timer.Pass(kLong);
    Desk::Playback& playback = *host->GetPlayback();
    for (const char* const next : {"register", "callback OnIngestStarted", "panel RenameRequest"}) {
        playback.Step();
        EXPECT_EQ(State()["next"], next);
    }
    EXPECT_EQ(State()["comment"], "News.");
    playback.Step();
    EXPECT_EQ(State()["waitsFor"], kEvent + "RenameRequest") << "for a page";
    changes = 0;
    Raise(kPage, "RenameRequest", Message(1, kItem));
    EXPECT_EQ(changes, 1);
    timer.Pass(kLong);
    EXPECT_EQ(Told().size(), 1u);
    playback.Step();
    playback.Step();
    EXPECT_EQ(Told().size(), 1u);
    EXPECT_EQ(State()["isEnded"], true);
}

TEST_F(PlayedLinesTest, RunsOnTheThreadOfTheHost)
{
    std::promise<void> ended;
    std::istringstream session(kStart + kNews + kNews + PanelLine("RenameRequest", Message(1, kItem)) +
                               kNews);
    Desk::Script script = Desk::ReadScript(session, "day.jsonl");
    Desk::HostThread thread([](const std::string& problem) { ADD_FAILURE() << problem; }, [] {});
    Desk::PlayedHost::Options options;
    options.pace.speed = 1000;
    options.changed = [&] {
        if (State()["waitsFor"].is_string())
            thread.Post([this] { Raise(kPage, "RenameRequest", Message(1, kItem)); });
        if (State()["isEnded"] == true)
            ended.set_value();
    };
    thread.Run([&] {
        host.emplace(std::move(script), thread, options);
        host->OnPanel();
    });
    EXPECT_EQ(ended.get_future().wait_for(std::chrono::seconds(60)), std::future_status::ready);
    thread.Run([this] { host.reset(); });
}

TEST_F(PlayedLinesTest, RefusesBadSessionsBeforeTheyArePlayed)
{
    for (const auto& [line, text] :
         {std::pair(2, "\xEF\xBB\xBF{\"create\": \"library\"}\r\n{\"create\": \"library\"}"),
          std::pair(1, R"({"panel": "x"})"), std::pair(3, "#\n\n{")}) {
        std::istringstream file(text);
        try {
            Desk::ReadScript(file, "bad");
            ADD_FAILURE() << text;
        } catch (const Session::SessionError& error) {
            EXPECT_EQ(error.LineNumber(), static_cast<std::size_t>(line)) << error.what();
        }
    }
}

TEST_F(PlayedLinesTest, ALineThatTurnsBadEndsThePlayAndNotTheHost)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem)) +
         PanelLine("RenameRequest", Message(2, kItem)) +
         R"({"host": {"paths": {"/3e550000-0000-4000-8000-000000000001": "file",)"
         R"( "/3e550000-0000-4000-8000-000000000002": "file"}}})"
         "\n" +
         kNews + kNews);
    timer.Pass(kStarted);
    Raise(kPage, "RenameRequest", Message(3, kItem));
    Raise(kPage, "RenameRequest", Message(3, kItem));
    timer.Pass(kLong);
    EXPECT_EQ(State()["problem"].get<std::string>().substr(0, 8), "line 6: ");
    EXPECT_EQ(State()["isEnded"], true);
    EXPECT_THAT(Told(), IsEmpty());
    Raise(kPage, "OpenIngestDialog", Message(4, ""));
    EXPECT_EQ(Told().size(), 1u);
}

TEST_F(PlayedLinesTest, GoesOnWithoutAConnectorThatIsReleased)
{
    const std::string insert =
        R"(<newDynamicColumns><dynamicColumn ID="c0100001-0000-4000-8000-000000000001" name="Scene"/>)"
        "</newDynamicColumns>";
    Play(R"({"register": true}
{"create": "mediaCollection"}
{"callback": "OnIngestStarted", "to": "mediaCollection", "args": ["7a5c0009-0000-4000-8000-000000000009"]}
)" + PanelLine("RenameRequest", Message(1, kItem)) +
         R"({"release": "mediaCollection"}
{"ui": true}
)" + PanelLine("RenameRequest", Message(2, kItem)) +
         R"({"create": "mediaCollection"})");
    timer.Pass(kLong);
    Raise(kPage, "InsertDynamicColumns", Message(3, insert));
    EXPECT_FALSE(host->DeliverPosted()) << "the session says when";
    Raise(kPage, "RenameRequest", Message(4, kItem));
    timer.Pass(kLong);
    EXPECT_EQ(State()["waitsFor"], kEvent + "RenameRequest");
    EXPECT_THROW(host->Callback("OnIngestStarted", Json::array({""}), {}), Session::FormatError);
    Raise(kPage, "OpenIngestDialog", Message(5, ""));
    EXPECT_THAT(Told(), IsEmpty()) << "nobody hears it";
    Raise(kPage, "RenameRequest", Message(6, kItem));
    timer.Pass(kLong);
    EXPECT_EQ(State()["isEnded"], true);
    EXPECT_FALSE(host->DeliverPosted()) << "what was posted is delivered";
    Raise(kPage, "InsertDynamicColumns", Message(7, insert));
    EXPECT_TRUE(host->DeliverPosted());
}

TEST_F(PlayedLinesTest, CallsBackByHand)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem, "panel-1")) +
         R"({"create": "mediaCollection"})");
    timer.Pass(kStarted);
    Raise(kOther, "RenameRequest", Message(2, kItem, "panel-8"));
    timer.Pass(kLine);
    const std::string task = "7a5c0000-0000-4000-8000-000000000002";
    const auto progress = [&](const char* message, std::optional<Desk::PanelKind> to) {
        host->Callback("OnTransferProgress", {task, message, 5}, to);
        return Told();
    };
    const char* const known = "3e550000-0000-4000-8000-000000000002";
    const char* const unknown = "3e550000-0000-4000-8000-000000000009";
    EXPECT_THAT(progress(known, {}), ElementsAre("TransferProgress to MediaCollection 3e550000"));
    EXPECT_THAT(progress(known, Desk::PanelKind::kLibrary),
                ElementsAre("TransferProgress to panel-8 3e550000"));
    EXPECT_THAT(progress(unknown, {}), ElementsAre("TransferProgress to panel-8 3e550000",
                                                   "TransferProgress to MediaCollection 3e550000"));
    EXPECT_THROW(progress("no", {}), Session::FormatError);
    EXPECT_THROW(host->Callback("OnX", Json::array(), {}), Session::FormatError);
    host->Tell("com.velmo.host.notification.AppExit", Message(1, ""));
    EXPECT_THAT(Told(), ElementsAre("AppExit to panel-7 3e550000"));
}

}  // namespace
