#include "assetconnector/connectors/EventCatalogue.h"
#include "session/NotificationText.h"
#include "session/PlainReplay.h"
#include "session/Player.h"
#include "session/ReadableReplay.h"
#include "session/SessionCheck.h"
#include "tests/support/SmallStack.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

namespace {

using Session::Style;

const std::string kCreate = "{\"create\": \"library\"}\n";
const std::string kSubscribed =
    R"({"hostCall":"Kiln::StationUtils::AddListener","args":["Ridge.Station.PanelServices"]})"
    "\n";
const std::string kStart =
    R"({"callback": "OnIngestStarted", "to": "library", "args": ["00000000-0000-0000-0000-000000000001"]})"
    "\n";

/// Plays a session; \return What is printed, and what is wrong in which line.
std::string Replay(const std::string& session)
{
    std::istringstream file(session);
    std::ostringstream output;
    Session::PlainReplay plain(output);
    try {
        Session::PlaySession(file, Style::kSession, plain);
    } catch (const Session::SessionError& error) {
        output << error.LineNumber() << ": " << error.what();
    }
    return output.str();
}

TEST(ReplayTest, BadLinesEndTheReplayBehindTheLinesBeforeThem)
{
    const struct
    {
        const char* line;
        const char* complaint;
    } kCases[] = {
        {"[]", "expected an object"},
        {"{}", "neither an input nor an effect"},
        {R"({"create": "library"})", "there already is a library connector"},
        {R"({"create": "panel"})", "unknown connector \"panel\""},
        {R"({"release": "mediaCollection"})", "there is no media collection connector"},
        {R"({"release": "library", "now": true})", "unknown key \"now\""},
        {R"({"register": null})", "register: expected true or false"},
        {R"({"ui": false})", "ui: expected true"},
        {R"({"panel": "x"})", "\"data\" is missing"},
        {R"({"station": "panel", "message": "TandemEvent"})", "unknown message \"TandemEvent\""},
        {R"({"station": "panel", "message": "Ridge::AddTandemListenerEvent", "type": "x"})",
         "unknown key \"type\""},
        {R"({"callback": "OnX", "to": "library", "args": []})", "unknown callback \"OnX\""},
        {R"({"callback": "OnIngestStarted", "to": "library", "args": []})",
         "args: expected 1 entries, not 0"},
        {R"({"callback": "OnIngestStarted", "to": "mediaCollection", "args": []})",
         "there is no media collection connector"},
        {R"({"call": "ACUtils::GetResultString", "args": [0]})",
         "unknown function \"ACUtils::GetResultString\""},
        {R"({"host": {"throws": ["Kiln::StationUtils::BroadcastMessage"]}})",
         "throws: unknown operation \"Kiln::StationUtils::BroadcastMessage\""},
        {R"({"host": {"quiet": ["Kiln::StationUtils::PostMessageToUIThread"]}})",
         "quiet: unknown operation \"Kiln::StationUtils::PostMessageToUIThread\""},
        {R"({"us": 1, "thread": 0})", "neither an input nor an effect"},
        {R"({"ui": true, "us": -1})", "us: the integer is out of range"},
        {R"({"ui": true, "thread": "main"})", "thread: expected an integer"},
        {R"({"host": {"paths": {"/a": "disk"}}})",
         "paths: \"/a\": expected \"file\", \"folder\" or \"missing\""},
        {R"({"host": {"browserID": "b", "disk": 1}})", "unknown key \"disk\""},
        {R"({"host": {"xmpCache": {"/a": {"code": 1}}}})", "xmpCache: \"/a\": unknown key \"code\""},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Replay("#\n" + kCreate + each.line + '\n' + kStart),
                  kCreate + kSubscribed + "3: " + each.complaint);
    using namespace std::string_literals;
    EXPECT_EQ(Replay("{\"exception\": \"\"}\0{\"ui\": true}\n"s), "1: column 18: not JSON: a NUL byte");
}

TEST(ReplayTest, InputsAreEchoedAndTheRestIsSkipped)
{
    const std::string echoed = " {\t\"create\":\"library\" }\r\n{\"release\": \"library\"}";
    EXPECT_EQ(Replay("\xEF\xBB\xBF# no\n\n \r\n" + echoed.substr(0, 25) +
                     "{\"hostCall\": [1.5, {\"a\": 1, \"a\": 2}], \"odd\": 1}\n{\"deliver\": 1e999}\n" +
                     echoed.substr(25)),
              echoed.substr(0, 25) + kSubscribed + echoed.substr(25) + "\n{\"destroyed\":\"library\"}\n");
}

TEST(ReplayTest, WhatThrowsIsRecordedAndWhatIsQuietHappens)
{
    const std::string quiet = R"({"host": {"throws": ["Kiln::StationUtils::AddListener"], )"
                              R"("quiet": ["Kiln::StationUtils::AddListener"]}})"
                              "\n";
    const std::string thrown = "{\"exception\":\"Kiln::StationUtils::AddListener failed\"}\n";
    const std::string loud = "{\"host\": {\"quiet\": []}}\n";
    const std::string again = "{\"host\": {\"throws\": []}}\n";
    EXPECT_EQ(
        Replay(quiet + kCreate + loud + kCreate + again + kCreate),
        quiet + kCreate + thrown + loud + kCreate + kSubscribed + thrown + again + kCreate + kSubscribed);
}

TEST(ReplayTest, CheckFindsTheFirstDifference)
{
    const std::string started = Replay(kCreate + kStart).substr((kCreate + kSubscribed + kStart).size());
    std::string otherID = started;
    otherID.replace(otherID.find("panel-1"), 7, "panel-2");

    const struct
    {
        std::string session;
        std::size_t line;  ///< 0: the same.
        bool hasExpected, hasActual;
    } kCases[] = {
        {kCreate + kSubscribed + kStart + "# not an effect\n" + started, 0, false, false},
        {R"({"create": "library", "us": 18446744073709551615})" + ("\n" + kSubscribed), 0, false, false},
        {kCreate + R"({"thread": 2, "us": 3, )" + kSubscribed.substr(1), 0, false, false},
        {kCreate + kSubscribed + kStart + otherID, 4, true, true},
        {kCreate + kSubscribed + kStart + started + started, 5, true, false},
        {kCreate + kSubscribed + kStart, 3, false, true},
        {kCreate + "\n" + kStart + started, 1, false, true},
        {kSubscribed + kCreate, 1, true, false},
    };
    for (const auto& each : kCases) {
        std::istringstream file(each.session);
        Session::SessionCheck check;
        Session::PlaySession(file, Style::kSession, check);
        const auto& difference = check.FirstDifference();
        EXPECT_EQ(difference ? difference->line : 0, each.line) << each.session;
        EXPECT_EQ(difference && difference->expected != "no effect", each.hasExpected) << each.session;
        EXPECT_EQ(difference && difference->actual != "no effect", each.hasActual) << each.session;
    }
}

TEST(ReplayTest, CheckTellsNoPassword)
{
    for (const char* const effect :
         {R"({"dispatcher": "x", "args": [{"ftpSetting": {"ftpPassword": "geheim"}}]})",
          R"({"notification": "x", "data": "<a ftpPassword=\"geheim\"/>"})"}) {
        std::istringstream file(std::string(effect) + '\n');
        Session::SessionCheck check;
        Session::PlaySession(file, Style::kSession, check);
        ASSERT_TRUE(check.FirstDifference());
        EXPECT_EQ(check.FirstDifference()->expected.find("geheim"), std::string::npos);
        EXPECT_NE(check.FirstDifference()->expected.find("ftpPassword"), std::string::npos);
    }
}

TEST(ReplayTest, DeepEffectsNeedLittleStack)
{
    OnSmallStack([] {
        std::string played = Replay(
            "{\"create\": \"mediaCollection\"}\n{\"station\": \"Ridge.Station.PanelServices\", "
            "\"message\": \"Ridge::TandemEvent\", \"type\": \"com.velmo.browser.event.TriggerSaveAsset\", "
            "\"data\": \"<a>" +
            DeepItems("") + "</a>\"}\n");
        std::istringstream file(played.insert(played.rfind("subAssetItemList"), "other"));
        Session::SessionCheck check;
        Session::PlaySession(file, Style::kSession, check);
        ASSERT_TRUE(check.FirstDifference());
        EXPECT_NE(check.FirstDifference()->expected, check.FirstDifference()->actual);
    });
}

TEST(ReplayTest, NotificationsAreComparedAsTrees)
{
    const struct
    {
        const char* first;
        const char* second;
        bool same;
    } kCases[] = {
        {"<a x=\"1\" y='2'><b></b></a>", "<?xml version=\"1.0\"?><a y=\"2\" x=\"1\"><b/></a>", true},
        {"<p:a>&#65;</p:a>", "<p:a>A</p:a>", true},
        {"<a x=\"1\"/>", "<a/>", false},
        {"<a><b/><c/></a>", "<a><b><c/></b></a>", false},
        {"<a><b/></a>", "<a><b/><b/></a>", false},
        {"<a>x</a>", "<a><![CDATA[x]]></a>", false},
        {"<a>&</a>", "<a>&</a>", true},
        {"<a>&</a>", "<a>&amp;</a>", false},
    };
    for (const auto& each : kCases) {
        EXPECT_EQ(Session::SameNotificationText(each.first, each.second), each.same) << each.first;
        EXPECT_EQ(Session::SameNotificationText(each.second, each.first), each.same) << each.second;
    }
}

/// \return What people see of a session.
std::string Readable(const std::string& session)
{
    std::istringstream file(session);
    std::ostringstream output;
    Session::ReadableReplay readable(output, false);
    Session::PlaySession(file, Style::kReadable, readable);
    return output.str();
}

TEST(ReplayTest, PeopleSeeNeitherPasswordsNorControlCharacters)
{
    for (const char* const text : {"<m><ftpSetting ftpPassword=\\\"geheim\\\"/></m>",
                                   "<m><ftpSetting ftpPassword = 'geheim\\u001b[2J'></m>"}) {
        const std::string seen = Readable(std::string(R"({"panel": "x", "data": ")") + text + "\"}\n");
        EXPECT_NE(seen.find("***"), std::string::npos);
        EXPECT_EQ(seen.find("geheim"), std::string::npos);
        EXPECT_EQ(seen.find('\x1B'), std::string::npos);
    }
}

TEST(ReplayTest, PeopleSeeEveryHostCallButRegistrationsInARow)
{
    const std::string seen = Readable(
        R"({"create": "mediaCollection"}
{"register": true}
{"host": {"paths": {"/0": "file"}}}
{"panel": "com.velmo.browser.event.IngestMedia", "data": "<a><ingestMediaItemList><ingestMediaItem src='/0'/><ingestMediaItem src='1'/><ingestMediaItem src='2'/><ingestMediaItem src='3'/><ingestMediaItem src='4'/></ingestMediaItemList></a>"}
)");
    EXPECT_NE(seen.find("\n        … and " + std::to_string(AC::kRequestCount - 3) + " more\n"),
              std::string::npos);
    EXPECT_NE(seen.find("Ingestion of 4 failed"), std::string::npos);
    EXPECT_EQ(seen.find("more\n"), seen.rfind("more\n"));
}

TEST(ReplayTest, PeopleSeeNoOperationWithoutARow)
{
    std::ostringstream output;
    Session::ReadableReplay readable(output, false);
    for (const char* const effect : {R"({"dispatcher": "Forgotten", "args": []})", R"({"forgotten": "x"})",
                                     R"({"dispatcher": "RefuseExit", "args": [1, 2]})"})
        EXPECT_THROW(readable.OnEffect(effect), Session::FormatError) << effect;
    EXPECT_THROW(readable.OnInput({}, {{"forgotten", 1}}, {}), Session::FormatError);
    Session::Player player(Style::kReadable, [](auto& /*effect*/) { throw Session::FormatError("refused"); });
    EXPECT_THROW(player.Play(player.Read(Session::ParseJson(kCreate))), Session::FormatError);
}

TEST(ReplayTest, PeopleAreToldThatNothingHappens)
{
    const std::string seen =
        Readable(kCreate + R"({"panel": "x", "data": "<a/>"})" + "\n" + kStart + "{\"ui\": true}\n");
    EXPECT_NE(seen.find("<a/>\n    nothing happens: the request is not registered"), std::string::npos);
    EXPECT_EQ(seen.find("nothing happens\n"), seen.rfind("nothing"));  // the callback had an effect
    EXPECT_NE(
        Readable(
            "{\"host\": {\"quiet\": [\"PlexaManager::AddTandemEventListener\"]}}\n{\"register\": true}\n")
            .find("requests\n    nothing is shown\n"),
        std::string::npos);
}

}  // namespace
