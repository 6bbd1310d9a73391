// Pages that take the part of a session's panels.

#include "session/NotificationText.h"
#include "tests/desk/Played.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <set>

namespace {

using Session::Json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
        const std::regex guid("(7a5c|3e55)[0-9a-f-]{32}");
        for (std::sregex_iterator at(text.begin(), text.end(), guid), end; at != end; ++at)
            mGuids.insert(at->str());
    }
    std::string In(std::string text) const
    {
        for (const std::string& guid : mGuids)
            text = std::regex_replace(text, std::regex(guid), "11fe" + guid.substr(4));
        return text;
    }

private:
    std::set<std::string> mGuids;
};

TEST_F(PlayedHostTest, DaysArePlayedWithTheIDsOfLivePages)
{
    for (const std::string day : {"library-day.jsonl", "media-collection-day.jsonl"}) {
        std::ifstream file = Open(day);
        Play(file);
        LiveGuids guids;
        std::vector<std::string> expected;
        std::ifstream again = Open(day);
        for (const Json& line : LinesOf(again)) {
            if (line.contains("notification")) {
                // The collection's connector names itself, but where it repeats the request.
                const bool namesPage =
                    day[0] == 'l' || line["notification"] == "com.velmo.host.notification.IngestMediaStatus";
                const std::string text = guids.In(line["data"]);
                expected.push_back(namesPage ? OfPage(text) : text);
            }
            if (!line.contains("panel"))
                continue;
            timer.Pass(kLong);
            ASSERT_EQ(State()["waitsFor"], line["panel"]) << day;
            guids.Add(line["data"]);
            host->Raise(kPage, line["panel"], OfPage(guids.In(line["data"])));
        }
        timer.Pass(kLong);
        EXPECT_EQ(State()["problem"], Json()) << day;
        EXPECT_EQ(State()["line"], State()["lines"]) << day;
        ASSERT_EQ(panel->told.size(), expected.size()) << day;
        for (std::size_t at = 0; at < expected.size(); ++at)
            EXPECT_TRUE(Session::SameNotificationText(panel->told[at].second, expected[at]))
                << day << "\nexpected: " << expected[at] << "\nactual:   " << panel->told[at].second;
        EXPECT_THAT(Recorded("next"), IsEmpty()) << day;
        EXPECT_EQ(Difference(), "") << day;
    }
}

/// Those that throw, too.
TEST_F(PlayedHostTest, SessionsPlayWithoutPages)
{
    for (const char* const key : {"notification", "dispatcher", "post", "deliver"})
        for (const auto& path : std::filesystem::directory_iterator(TEST_DATA "/sessions")) {
            std::ifstream file(path.path());
            Play(file);
            std::vector<std::string> expected;
            std::ifstream again(path.path());
            for (const Json& line : LinesOf(again))
                if (line.contains(key))
                    expected.push_back(line[key]);
            for (int turns = 0; turns < 1000 && State()["isEnded"] == false; ++turns) {
                timer.Pass(kLine);
                host->GetPlayback()->RaiseIt();
            }
            EXPECT_EQ(State()["problem"], Json()) << path;
            EXPECT_EQ(Recorded(key), expected) << path;
        }
}

TEST_F(PlayedHostTest, AnswersNameThePageThatAsked)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem, "panel-1")) +
         PanelLine("RenameRequest", Message(2, kItem, "panel-2")) + ProgressLine(1, 10) +
         ProgressLine(2, 20) + kNews);
    timer.Pass(kStarted);
    Raise(kPage, "RenameRequest", Message(3, kItem));
    Raise(kOther, "RenameRequest", Message(4, kItem, "panel-8"));
    Raise(kPage, "RenameRequest", Message(5, kItem));
    timer.Pass(2 * kLine);
    std::vector<std::string> told;
    for (const auto& [type, data] : panel->told)
        told.push_back(Attribute(data, "browserID") + ' ' + Attribute(data, "msgID").back());
    EXPECT_THAT(told, ElementsAre("panel-7 3", "panel-8 4"));
    panel->told.clear();
    timer.Pass(kLine);
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
    timer.Pass(kStarted);
    ASSERT_EQ(State()["waitsFor"], kEvent + "OpenIngestDialog");
    Raise(kPage, "ImportXMP", Message(2, import));
    Raise(kPage, "SelectAssets", "\xc3");
    Raise(kPage, "RenameRequest", Message(3, kItem));
    EXPECT_EQ(State()["waitsFor"], kEvent + "OpenIngestDialog");
    Raise(kPage, "OpenIngestDialog", Message(4, dialog));
    timer.Pass(kLine);
    EXPECT_THAT(Told(), ElementsAre("StartIngest to x c0ffee00"));
    EXPECT_THAT(Recorded("dispatcher"), ElementsAre("ReadXMPFile", "RenameItems", "ShowIngestDialog"));
    EXPECT_THAT(Recorded("exception"), ElementsAre("full")) << "in its place, and the session goes on";
}

TEST_F(PlayedHostTest, SaysWhatDiffers)
{
    const auto transfer = [](const std::string& content) { return Message(1, content, "panel-1"); };
    const std::string ftp = R"(<ftpSetting ftpServerName="a" ftpPassword="geheim"/>)";
    const std::string two = List(R"(<renameItem src="/a"/><renameItem src="/b"/>)");
    std::string many, others;
    std::vector<std::string> named;
    for (int i = 0; i < 30; ++i) {
        many += "<renameItem src=\"/a\"/>";
        others += "<renameItem src=\"/b\"/>";
        if (i < 20)
            named.push_back("renameItemList[" + std::to_string(i) + R"(].src was "/a", is "/b")");
    }
    named.emplace_back("and 10 more");
    const struct
    {
        const char* name;
        std::string ofFile, live;
        std::vector<std::string> marks;
    } kCases[] = {
        {"many", transfer(List(many)), Message(2, List(others)), named},
        {"nothing", transfer(two), Message(2, two), {}},
        {"a member",
         transfer(two),
         Message(2, List(R"(<renameItem src="/a"/><renameItem src="/c"/>)")),
         {R"(renameItemList[1].src was "/b", is "/c")"}},
        {"left out",
         transfer(""),
         Message(2, kItem),
         {R"(renameItemList was left out, is [{"newName":"b.mov","src":"/a.mov"}])"}},
        {"a long one",
         transfer(R"(<targetBin ID="a"/>)"),
         Message(2, R"(<targetBin ID=")" + std::string(58, 'x') + "\u00e9\"/>"),
         {R"(targetBin was "a", is ")" + std::string(58, 'x') + "\u2026"}},
        {"a GUID in a text",
         transfer(R"(<targetBin ID="of 3E550000-0000-4000-8000-000000000001"/>)"),
         Message(2, R"(<targetBin ID="of 3e550000-0000-4000-8000-000000000002"/>)"),
         {}},
        {"who asks",
         transfer(two),
         Message(2, two, "panel-1"),
         {R"(header.browserID was "panel-7", is "panel-1")"}},
        {"a password",
         transfer(ftp),
         Message(2, R"(<ftpSetting ftpServerName="b" ftpPassword="secret"/>)"),
         {R"(ftpSetting.ftpServerName was "a", is "b")"}},
        {"no UTF-8",
         transfer(R"(<targetBin ID="a"/>)"),
         Message(2, "<targetBin ID=\"\xc3\"/>"),
         {R"(targetBin was "a", is ")"}},
        {"no text", transfer(two), "<a", {"the text cannot be read, line 1, column 3: "}},
        {"no text in the session",
         "<a",
         Message(2, two),
         {"the session's text cannot be read, line 1, column 3"}},
    };
    for (const auto& row : kCases) {
        Play(kStart + PanelLine("RenameRequest", row.ofFile));
        timer.Pass(kStarted);
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

TEST_F(PlayedHostTest, RaisesItItselfWithWhatIsPaired)
{
    Play(kStart + PanelLine("RenameRequest", Message(1, kItem, "panel-1")) +
         PanelLine("CancelTransferRequest", Message(1, "", "panel-1")) +
         PanelLine("OpenIngestDialog", Message(1, R"(<targetBin ID="a"/>)", "panel-1")) +
         ProgressLine(1, 10));
    host->GetPlayback()->RaiseIt();
    timer.Pass(kStarted);
    Raise(kPage, "RenameRequest", Message(2, kItem));
    host->GetPlayback()->RaiseIt();
    host->GetPlayback()->RaiseIt();
    EXPECT_EQ(State()["waitsFor"], Json());
    host->GetPlayback()->RaiseIt();
    EXPECT_EQ(State()["next"], "callback OnTransferProgress") << "which is not raised";
    timer.Pass(kLine);
    ASSERT_EQ(panel->told.size(), 2u);
    for (const auto& [type, data] : panel->told) {
        EXPECT_EQ(Attribute(data, "browserID"), "panel-7");
        EXPECT_EQ(Attribute(data, "msgID"), "3e550000-0000-4000-8000-000000000002");
    }
}

}  // namespace
