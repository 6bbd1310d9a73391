// Sessions played for pages that take the part of their panels.

#include "assetconnector/host/XMLPlatform.h"
#include "desk/play/PlayedHost.h"
#include "session/NotificationText.h"
#include "session/SessionCheck.h"
#include "session/SessionFile.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Desk::Origin;
using Desk::PanelKind;
using Session::Json;
using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kEvent = "com.velmo.browser.event.";
const Origin kPage{PanelKind::kLibrary, "panel-7"};
const Origin kOther{PanelKind::kMediaCollection, "panel-8"};

/// Time that passes when it is told to.
class HandTimer final : public Desk::Timer
{
public:
    void PostAfter(milliseconds delay, Task task) override { mTasks.emplace(mNow + delay, std::move(task)); }
    std::chrono::steady_clock::time_point Now() const override { return mNow; }

    void Pass(milliseconds time)
    {
        const auto end = mNow + time;
        while (!mTasks.empty() && mTasks.begin()->first <= end) {
            const auto first = mTasks.begin();
            mNow = std::max(mNow, first->first);
            const Task task = std::move(first->second);
            mTasks.erase(first);
            task();
        }
        mNow = end;
    }

private:
    std::chrono::steady_clock::time_point mNow;
    std::multimap<std::chrono::steady_clock::time_point, Task> mTasks;
};

struct Panel final : ReferenceHost::Panel
{
    void OnNotification(const std::string& type, const std::string& data) override
    {
        told.emplace_back(type, data);
    }

    std::vector<std::pair<std::string, std::string>> told;
};

std::string Attribute(const std::string& xml, const std::string& element)
{
    const std::string start = '<' + element + " ID=\"";
    const std::size_t begin = xml.find(start);
    return begin == std::string::npos
               ? "none"
               : xml.substr(begin + start.size(), xml.find('"', begin + start.size()) - begin - start.size());
}

/// \param number Of the message and the task.
std::string Message(int number, const std::string& content, const std::string& browserID = "panel-7")
{
    const std::string tail = "-0000-4000-8000-00000000000" + std::to_string(number);
    return R"(<browserMessage><browserID ID=")" + browserID + R"("/><taskID ID="7a5c0000)" + tail +
           R"("/><msgID ID="3e550000)" + tail + "\"/>" + content + "</browserMessage>";
}

std::string PanelLine(const std::string& name, const std::string& xml)
{
    return Json{{"panel", kEvent + name}, {"data", xml}}.dump() + '\n';
}

std::string ProgressLine(int number, int percentage)
{
    const std::string tail = "-0000-4000-8000-00000000000" + std::to_string(number);
    return Json{{"callback", "OnTransferProgress"},
                {"to", "library"},
                {"args", {"7a5c0000" + tail, "3E550000" + tail, percentage}}}
               .dump() +
           '\n';
}

const std::string kStart = R"({"host": {"quiet": ["PlexaManager::AddTandemEventListener"]}}
{"create": "library"}
{"register": true}
)";
const std::string kNews =
    R"({"callback": "OnIngestStarted", "to": "library", "args": ["7a5c0009-0000-4000-8000-000000000009"]})"
    "\n";
const std::string kItem = R"(<renameItemList><renameItem src="/a.mov" newName="b.mov"/></renameItemList>)";

class PlayedHostTest : public ::testing::Test
{
protected:
    void Play(const std::string& session, bool isStepping = false)
    {
        std::istringstream file(session);
        Play(Desk::ReadScript(file, "day.jsonl"), isStepping);
    }

    void Play(Desk::Script script, bool isStepping)
    {
        Desk::PlayedHost::Options options;
        options.pace.isStepping = isStepping;
        options.recording.sink = [this](const std::string& lines) { recording += lines; };
        options.changed = [this] { ++changes; };
        host.emplace(std::move(script), timer, options);
        host->Attach(panel);
    }

    Json State() const { return host->State().at("play"); }
    void Raise(const Origin& asker, const std::string& name, const std::string& xml)
    {
        host->Raise(asker, kEvent + name, xml);
    }

    /// \return Of each notification since the last call the last part of its identifier, whom it names, and
    /// its message.
    std::vector<std::string> Told()
    {
        std::vector<std::string> told;
        for (const auto& [type, data] : std::exchange(panel->told, {}))
            told.push_back(type.substr(type.rfind('.') + 1) + " to " + Attribute(data, "browserID") + ' ' +
                           Attribute(data, "msgID").substr(0, 8));
        return told;
    }

    /// Ends the host. \return What its recording holds behind that key, line by line.
    std::vector<std::string> Recorded(const std::string& key)
    {
        host.reset();
        std::vector<std::string> found;
        std::istringstream lines(recording);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t begin = line.find('{');
            if (begin == std::string::npos || (line[0] == '#' && line.compare(0, 8, "# desk: ") != 0))
                continue;
            const Json json = Json::parse(line.substr(begin));
            if (json.contains(key))
                found.push_back(json[key].is_string() ? json[key].get<std::string>() : json[key].dump());
        }
        return found;
    }

    /// Behind Recorded. \return What a replay of the recording does otherwise.
    std::string Difference() const
    {
        std::istringstream file(recording);
        Session::SessionCheck check;
        Session::PlaySession(file, Session::Style::kSession, check);
        const auto& found = check.FirstDifference();
        return found ? "expected: " + found->expected + "\nactual:   " + found->actual : std::string();
    }

    const AC::XMLPlatform platform;
    HandTimer timer;
    std::string recording;  ///< Whole when the host is gone.
    int changes = 0;
    boost::shared_ptr<Panel> panel = boost::make_shared<Panel>();
    std::optional<Desk::PlayedHost> host;
};

/// \return The text as of the live page.
std::string OfPage(std::string text)
{
    for (const std::string& id : {std::string("\"panel-1\""), std::string("\"MediaCollection\"")})
        if (const std::size_t at = text.find(id); at != std::string::npos)
            text.replace(at, id.size(), "\"panel-7\"");
    return text;
}

/// Gives the GUIDs that panels made another beginning.
class LiveGuids
{
public:
    void Add(const std::string& text)
    {
        for (std::size_t at = 0; at + 36 <= text.size(); ++at)
            if (const std::string prefix = text.substr(at, 4); prefix == "7a5c" || prefix == "3e55")
                mGuids.insert(text.substr(at, 36));
    }
    std::string In(std::string text) const
    {
        for (const std::string& guid : mGuids)
            for (std::size_t at = text.find(guid); at != std::string::npos; at = text.find(guid, at))
                text.replace(at, 4, "11fe");
        return text;
    }

private:
    std::set<std::string> mGuids;
};

TEST_F(PlayedHostTest, DaysArePlayedWithTheIDsOfLivePages)
{
    for (const char* const day : {"library-day", "media-collection-day"}) {
        std::ifstream file(TEST_DATA "/sessions/" + std::string(day) + ".jsonl");
        Play(Desk::ReadScript(file, day), false);
        LiveGuids guids;
        std::vector<std::string> expected;
        file.clear();
        file.seekg(0);
        for (std::string line; std::getline(file, line);) {
            const Json json = line.empty() || line[0] == '#' ? Json::object() : Json::parse(line);
            if (json.contains("notification")) {
                // The collection's connector names itself, but where it repeats the request.
                const bool namesPage =
                    day[0] == 'l' || json["notification"] == "com.velmo.host.notification.IngestMediaStatus";
                const std::string text = guids.In(json["data"]);
                expected.push_back(namesPage ? OfPage(text) : text);
            }
            if (!json.contains("panel"))
                continue;
            timer.Pass(milliseconds(100000));
            ASSERT_EQ(State()["waitsFor"], json["panel"]) << day;
            guids.Add(json["data"]);
            host->Raise(kPage, json["panel"], OfPage(guids.In(json["data"])));
        }
        timer.Pass(milliseconds(100000));
        EXPECT_EQ(State()["isEnded"], true) << day;
        EXPECT_EQ(State()["problem"], Json()) << day;
        EXPECT_EQ(State()["line"], State()["lines"]) << day;
        ASSERT_EQ(panel->told.size(), expected.size()) << day;
        for (std::size_t at = 0; at < expected.size(); ++at)
            EXPECT_TRUE(Session::SameNotificationText(panel->told[at].second, expected[at]))
                << day << "\nexpected: " << expected[at] << "\nactual:   " << panel->told[at].second;
        EXPECT_GT(expected.size(), 5u);
        panel->told.clear();
        EXPECT_THAT(Recorded("next"), IsEmpty()) << day;
        EXPECT_EQ(Difference(), "") << day;
    }
}

TEST_F(PlayedHostTest, SessionsPlayWithoutPages)
{
    for (const auto& path : std::filesystem::directory_iterator(TEST_DATA "/sessions")) {
        recording.clear();
        std::ifstream file(path.path());
        Play(Desk::ReadScript(file, "all"), false);
        std::vector<std::string> expected;
        file.clear();
        file.seekg(0);
        for (std::string line; std::getline(file, line);)
            if (line.compare(0, 16, "{\"notification\"") == 0)
                expected.push_back(Json::parse(line)["data"]);
        while (State()["isEnded"] == false) {
            timer.Pass(milliseconds(300));
            host->GetPlayback()->RaiseIt();
        }
        EXPECT_EQ(State()["problem"], Json()) << path;
        host.reset();
        std::vector<std::string> told;
        std::istringstream lines(recording);
        for (std::string line; std::getline(lines, line);)
            if (line.compare(0, 16, "{\"notification\"") == 0)
                told.push_back(Json::parse(line)["data"]);
        EXPECT_EQ(told, expected) << path;
    }
}

TEST_F(PlayedHostTest, AnswersNameThePageThatAsked)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem, "panel-1")) +
         PanelLine("RenameRequest", Message(2, kItem, "panel-2")) + ProgressLine(1, 10) +
         ProgressLine(2, 20) + kNews);
    timer.Pass(milliseconds(900));
    Raise(kPage, "RenameRequest", Message(3, kItem));
    Raise(kOther, "RenameRequest", Message(4, kItem, "panel-8"));
    Raise(kPage, "RenameRequest", Message(5, kItem));
    timer.Pass(milliseconds(600));
    std::vector<std::string> told;
    for (const auto& [type, data] : panel->told)
        told.push_back(Attribute(data, "browserID") + ' ' + Attribute(data, "msgID").back());
    EXPECT_THAT(told, ElementsAre("panel-7 3", "panel-8 4"));
    panel->told.clear();
    timer.Pass(milliseconds(300));
    EXPECT_THAT(Told(), ElementsAre("StartIngest to panel-7 00000000")) << "the host's own panel is that one";
    EXPECT_THAT(Recorded("next"), ElementsAre("not in the session"));
    EXPECT_THAT(Recorded("by"), ElementsAre("panel-7", "panel-8", "panel-7"));
}

TEST_F(PlayedHostTest, RequestsThatPassUseNothingUp)
{
    const std::string dialog = R"(<targetBin ID="Day 1"/>)";
    const std::string import = R"(<fileList><filePath path="/a.mov"/></fileList>)";
    const std::string given = "c0ffee00-0000-4000-8000-000000000001";
    Play(
        kStart + R"({"host": {"guids": [")" + given +
        R"("], "throwsAt": [["ReadXMPFile", 1, "busy"]], "answers": [["PlexaManager::GetBrowserID", [], "x"]]}})"
        "\n{\"ui\": true}\n" +
        R"({"host": {"throwsAt": [["ShowIngestDialog", 1, "full"]]}})"
        "\n" +
        PanelLine("OpenIngestDialog", Message(1, dialog)) + kNews);
    timer.Pass(milliseconds(900));
    ASSERT_EQ(State()["waitsFor"], kEvent + "OpenIngestDialog");
    Raise(kPage, "ImportXMP", Message(2, import));
    Raise(kPage, "RenameRequest", Message(3, kItem));
    EXPECT_EQ(State()["waitsFor"], kEvent + "OpenIngestDialog");
    Raise(kPage, "OpenIngestDialog", Message(4, dialog));
    timer.Pass(milliseconds(300));
    EXPECT_THAT(Told(), ElementsAre("StartIngest to x c0ffee00"));
    EXPECT_THAT(Recorded("dispatcher"), ElementsAre("ReadXMPFile", "RenameItems", "ShowIngestDialog"));
    EXPECT_THAT(Recorded("exception"), ElementsAre("full")) << "in its place, and the session goes on";
}

TEST_F(PlayedHostTest, SaysWhatDiffers)
{
    const auto transfer = [](const std::string& content) { return Message(1, content, "panel-1"); };
    const std::string ftp = R"(<ftpSetting ftpServerName="a" ftpPassword="geheim"/>)";
    const std::string two =
        R"(<renameItemList><renameItem src="/a"/><renameItem src="/b"/></renameItemList>)";
    const struct
    {
        const char* name;
        std::string ofFile, live;
        std::vector<std::string> marks;
    } kCases[] = {
        {"nothing", transfer(two), Message(2, two), {}},
        {"a member",
         transfer(two),
         Message(2, R"(<renameItemList><renameItem src="/a"/><renameItem src="/c"/></renameItemList>)"),
         {R"(renameItemList[1].src was "/b", is "/c")"}},
        {"left out",
         transfer(""),
         Message(2, kItem),
         {R"(renameItemList was left out, is [{"newName":"b.mov","src":"/a.mov"}])"}},
        {"a long one",
         transfer("<targetBin ID=\"a\"/>"),
         Message(2, "<targetBin ID=\"" + std::string(58, 'x') + "\u00e9" + "\"/>"),
         {"targetBin was \"a\", is \"" + std::string(58, 'x') + "\u2026"}},
        {"a GUID in a text",
         transfer("<targetBin ID=\"of 3E550000-0000-4000-8000-000000000001\"/>"),
         Message(2, "<targetBin ID=\"of 3e550000-0000-4000-8000-000000000002\"/>"),
         {}},
        {"who asks",
         transfer(two),
         Message(2, two, "panel-1"),
         {R"(header.browserID was "panel-7", is "panel-1")"}},
        {"a password",
         transfer(ftp),
         Message(2, R"(<ftpSetting ftpServerName="b" ftpPassword="secret"/>)"),
         {R"(ftpSetting.ftpServerName was "a", is "b")"}},
        {"no text", transfer(two), "<a", {"the text cannot be read, line 1, column 3"}},
        {"no text in the session",
         "<a",
         Message(2, two),
         {"the session's text cannot be read, line 1, column 3"}},
    };
    for (const auto& row : kCases) {
        recording.clear();
        Play(kStart + PanelLine("RenameRequest", row.ofFile));
        timer.Pass(milliseconds(900));
        Raise(kPage, "RenameRequest", row.live);
        EXPECT_EQ(State()["isEnded"], true) << row.name;
        const std::vector<std::string> marks = Recorded("next");
        ASSERT_EQ(marks.size(), row.marks.size()) << row.name << ": " << ::testing::PrintToString(marks);
        for (std::size_t at = 0; at < marks.size(); ++at)
            EXPECT_EQ(marks[at].substr(0, row.marks[at].size() + 12), "difference: " + row.marks[at])
                << row.name;
        EXPECT_EQ(recording.find("secret"), std::string::npos);
        EXPECT_EQ(recording.find("geheim"), std::string::npos);
    }
}

TEST_F(PlayedHostTest, NamesOnlySoManyDifferences)
{
    const auto items = [](const std::string& prefix) {
        std::string list = "<renameItemList>";
        for (int i = 0; i < 30; ++i)
            list += "<renameItem src=\"" + prefix + "\"/>";
        return list + "</renameItemList>";
    };
    Play(kStart + PanelLine("RenameRequest", Message(1, items("/a"))));
    timer.Pass(milliseconds(900));
    Raise(kPage, "RenameRequest", Message(1, items("/b")));
    const std::vector<std::string> marks = Recorded("next");
    ASSERT_EQ(marks.size(), 21u);
    EXPECT_EQ(marks[19], R"(difference: renameItemList[19].src was "/a", is "/b")");
    EXPECT_EQ(marks[20], "difference: and 10 more");
}

TEST_F(PlayedHostTest, RaisesItItselfWithWhatIsPaired)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem, "panel-1")) +
         PanelLine("CancelTransferRequest", Message(1, "", "panel-1")) +
         PanelLine("OpenIngestDialog", Message(1, "<targetBin ID=\"a\"/>", "panel-1")) + ProgressLine(1, 10));
    host->GetPlayback()->RaiseIt();
    timer.Pass(milliseconds(900));
    Raise(kPage, "RenameRequest", Message(2, kItem));
    host->GetPlayback()->RaiseIt();
    host->GetPlayback()->RaiseIt();
    EXPECT_EQ(State()["waitsFor"], Json());
    host->GetPlayback()->RaiseIt();
    EXPECT_EQ(State()["next"], "callback OnTransferProgress") << "which is not raised";
    timer.Pass(milliseconds(300));
    ASSERT_EQ(panel->told.size(), 2u);
    for (const auto& [type, data] : panel->told) {
        EXPECT_EQ(Attribute(data, "browserID"), "panel-7");
        EXPECT_EQ(Attribute(data, "msgID"), "3e550000-0000-4000-8000-000000000002");
    }
}

std::string NewsAt(int us)
{
    return "{\"us\": " + std::to_string(us) + ", " + kNews.substr(1);
}

TEST_F(PlayedHostTest, KeepsThePaceOfTheSession)
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

TEST_F(PlayedHostTest, PlaysStepByStep)
{
    Play("# A day\n# in two lines.\n#\n" + kStart + "# desk: {}\n# News.\n" + kNews +
             PanelLine("RenameRequest", Message(1, kItem)) + kNews,
         true);
    EXPECT_EQ(State(), Json::parse(R"({"file": "day.jsonl", "line": 5, "lines": 11, "waitsFor": null,
        "next": "create library", "comment": "A day\nin two lines.", "isEnded": false, "isStepping": true,
        "speed": 1.0, "problem": null})"));
    timer.Pass(milliseconds(100000));
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
    timer.Pass(milliseconds(100000));
    EXPECT_EQ(Told().size(), 1u);
    playback.Step();
    playback.Step();
    EXPECT_EQ(Told().size(), 1u);
    EXPECT_EQ(State()["isEnded"], true);
}

TEST_F(PlayedHostTest, RefusesBadSessionsBeforeTheyArePlayed)
{
    for (const auto& [line, text] :
         {std::pair(2, "\xEF\xBB\xBF{\"create\": \"library\"}\r\n{\"create\": \"library\"}"),
          std::pair(1, "{\"panel\": \"x\"}"), std::pair(3, "#\n\n{")}) {
        std::istringstream file(text);
        try {
            Desk::ReadScript(file, "bad");
            ADD_FAILURE() << text;
        } catch (const Session::SessionError& error) {
            EXPECT_EQ(error.LineNumber(), static_cast<std::size_t>(line)) << error.what();
        }
    }
}

TEST_F(PlayedHostTest, ALineThatTurnsBadEndsThePlayAndNotTheHost)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem)) +
         PanelLine("RenameRequest", Message(2, kItem)) +
         R"({"host": {"paths": {"/3e550000-0000-4000-8000-000000000001": "file",)"
         R"( "/3e550000-0000-4000-8000-000000000002": "file"}}})"
         "\n" +
         kNews + kNews);
    timer.Pass(milliseconds(900));
    Raise(kPage, "RenameRequest", Message(3, kItem));
    Raise(kPage, "RenameRequest", Message(3, kItem));
    timer.Pass(milliseconds(1000));
    EXPECT_EQ(State()["problem"].get<std::string>().substr(0, 8), "line 6: ");
    EXPECT_EQ(State()["isEnded"], true);
    EXPECT_THAT(Told(), IsEmpty());
    Raise(kPage, "OpenIngestDialog", Message(4, ""));
    EXPECT_EQ(Told().size(), 1u);
}

TEST_F(PlayedHostTest, WhatThrowsIsNotTheEnd)
{
    Play(kStart +
         R"({"host": {"throws": ["PlexaManager::DispatchApplicationEvent"]}})"
         "\n" +
         kNews +
         R"({"host": {"throws": []}})"
         "\n" +
         kNews);
    timer.Pass(milliseconds(1200));
    EXPECT_EQ(Told().size(), 1u);
    EXPECT_EQ(State()["problem"], Json());
    EXPECT_THAT(Recorded("exception"), ElementsAre("PlexaManager::DispatchApplicationEvent failed"));
}

TEST_F(PlayedHostTest, GoesOnWithoutAConnectorThatIsReleased)
{
    const std::string insert =
        "<newDynamicColumns><dynamicColumn ID=\"c0100001-0000-4000-8000-000000000001\" "
        "name=\"Scene\"/></newDynamicColumns>";
    Play(R"({"register": true}
{"create": "mediaCollection"}
{"callback": "OnIngestStarted", "to": "mediaCollection", "args": ["7a5c0009-0000-4000-8000-000000000009"]}
)" + PanelLine("RenameRequest", Message(1, kItem)) +
         R"({"release": "mediaCollection"}
{"ui": true}
)" + PanelLine("RenameRequest", Message(2, kItem)) +
         R"({"create": "mediaCollection"})");
    timer.Pass(milliseconds(1000));
    Raise(kPage, "InsertDynamicColumns", Message(3, insert));
    EXPECT_FALSE(host->DeliverPosted()) << "the session says when";
    Raise(kPage, "RenameRequest", Message(4, kItem));
    timer.Pass(milliseconds(1000));
    EXPECT_EQ(State()["waitsFor"], kEvent + "RenameRequest");
    EXPECT_THROW(host->Callback("OnIngestStarted", Json::array({""}), {}), Session::FormatError);
    Raise(kPage, "OpenIngestDialog", Message(5, ""));
    EXPECT_THAT(Told(), IsEmpty()) << "nobody hears it";
    Raise(kPage, "RenameRequest", Message(6, kItem));
    timer.Pass(milliseconds(1000));
    EXPECT_EQ(State()["isEnded"], true);
    EXPECT_FALSE(host->DeliverPosted()) << "what was posted is delivered";
    Raise(kPage, "InsertDynamicColumns", Message(7, insert));
    EXPECT_TRUE(host->DeliverPosted());
}

TEST_F(PlayedHostTest, CallsBackByHand)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem, "panel-1")) +
         R"({"create": "mediaCollection"})");
    timer.Pass(milliseconds(900));
    Raise(kOther, "RenameRequest", Message(2, kItem, "panel-8"));
    timer.Pass(milliseconds(300));
    const std::string task = "7a5c0000-0000-4000-8000-000000000002";
    const auto progress = [&](const char* message, std::optional<PanelKind> to) {
        host->Callback("OnTransferProgress", {task, message, 5}, to);
        return Told();
    };
    const char* const known = "3e550000-0000-4000-8000-000000000002";
    const char* const unknown = "3e550000-0000-4000-8000-000000000009";
    EXPECT_THAT(progress(known, {}), ElementsAre("TransferProgress to MediaCollection 3e550000"));
    EXPECT_THAT(progress(known, PanelKind::kLibrary), ElementsAre("TransferProgress to panel-8 3e550000"));
    EXPECT_THAT(progress(unknown, {}), ElementsAre("TransferProgress to panel-8 3e550000",
                                                   "TransferProgress to MediaCollection 3e550000"));
    EXPECT_THROW(progress("no", {}), Session::FormatError);
    EXPECT_THROW(host->Callback("OnX", Json::array(), {}), Session::FormatError);
    host->Tell("com.velmo.host.notification.AppExit", Message(1, ""));
    EXPECT_THAT(Told(), ElementsAre("AppExit to panel-7 3e550000"));
}

}  // namespace
