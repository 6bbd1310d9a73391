// What the desk reads off the lines of a recording.

#include "assetconnector/host/XMLPlatform.h"
#include "desk/LiveWork.h"
#include "desk/RecordFile.h"
#include "desk/SavedSelection.h"
#include "tests/desk/BridgeFixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

using Json = nlohmann::json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TrafficTest : public ::testing::Test
{
protected:
    TrafficTest() { traffic.Welcome(link, {}); }

    Json State()
    {
        return traffic.WithOverview([](const Desk::Overview& overview) { return overview.State(); });
    }

    /// \return The entries that came.
    std::vector<Json> Entries()
    {
        std::vector<Json> entries;
        while (const Desk::Frame frame = link->TakeFrame()) {
            const Json json = Json::parse(*frame);
            for (const Json& entry : json.value("traffic", Json::array()))
                entries.push_back(entry);
        }
        return entries;
    }

    void PostColumns(const char* name, const Json& payload)
    {
        traffic.Take(
            Json{{"post", std::string("Ridge::") + name}, {"station", "s"}, {"payload", payload}}.dump() +
            '\n');
    }

    Desk::Traffic traffic{{}, [] {}};
    const Desk::LinkRef link = boost::make_shared<Desk::Link>(Desk::Link::Limits());
};

TEST_F(TrafficTest, KeepsColumnsInBounds)
{
    Json many = Json::array();
    for (int i = 0; i < 100000; ++i)
        many.push_back({std::to_string(i), "name"});
    PostColumns("InsertDynamicColumnsMessage", Json::array({many}));
    PostColumns("InsertDynamicColumnsMessage", Json::array({many}));
    EXPECT_EQ(State()["columns"].size(), 1000u);
    PostColumns("InsertDynamicColumnsMessage", Json::parse(R"([[["5", "other"], ["5", "again"]]])"));
    EXPECT_EQ(State()["columns"].size(), 1000u);
    EXPECT_EQ(State()["columns"].back(), Json({{"id", "5"}, {"name", "other"}}));
    Json ids = Json::array();
    for (const Json& column : many)
        ids.push_back(column[0]);
    PostColumns("DeleteDynamicColumnsMessage", ids);
    EXPECT_EQ(State()["columns"], Json::array());
}

TEST_F(TrafficTest, BeginsAnewWhereLinesAreLost)
{
    const std::string begin =
        "# A recording of a host\n{\"host\":{\"browserID\":\"x\"}}\n{\"create\":\"library\"}\n";
    traffic.Take(begin + "# lost: 3 lines\n");
    traffic.Take(begin + "{\"ui\":true}\n");
    const auto last = Entries().back()["number"].get<std::uint64_t>();
    const std::string saved = Desk::SessionOf(traffic.Passages({last}));
    EXPECT_EQ(saved.find("create"), saved.rfind("create")) << saved;
}

TEST_F(TrafficTest, MarksWhatPagesHaveByANote)
{
    traffic.Take("# desk: {\"last\": \"of nothing\"}\n{\"ui\":true}\n# desk: {\"last\": \"at once\"}\n");
    traffic.Take("# desk: {\"last\": \"later\"}\n# desk: {\"note\": \"two\\nlines\"}\n");
    std::vector<std::string> marks;
    std::vector<std::string> notes;
    for (const Json& entry : Entries()) {
        marks.push_back(entry.value("marks", Json::array()).dump());
        notes.push_back(entry["line"].value("note", ""));
    }
    EXPECT_THAT(marks, ElementsAre("[\"of nothing\"]", "[\"at once\"]", "[\"later\"]", "[]"));
    EXPECT_THAT(notes, ElementsAre("of the line before", "", "of the line before", "two lines"));
}

TEST(RecordFile, EndsWhereLinesAreLostAndNotWhereATextSaysSo)
{
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("desk-record-" + std::to_string(getpid()));
    std::vector<std::string> problems;
    {
        Desk::RecordFile file(path);
        const auto write = [&](const char* lines) {
            file.Write(lines, [&problems](const std::string& problem) { problems.push_back(problem); });
        };
        write("{\"data\":\"# lost: 1\"}\n");
        EXPECT_THAT(problems, IsEmpty());
        write("{}\n# lost: 2 lines\n{}\n");
        write("{}\n");
    }
    std::ifstream read(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(read), {}), "{\"data\":\"# lost: 1\"}\n{}\n");
    EXPECT_EQ(problems.size(), 1u);
    std::filesystem::remove(path);
}

TEST_F(TrafficTest, AJobStaysWithWhoAskedFirst)
{
    const Desk::OwnAnswers answers(traffic);
    Desk::LiveWork work(answers);
    Desk::LiveHost host(work);
    const std::string id = "3e550001-0000-4000-8000-000000000001";
    const auto raise = [&](Desk::PanelKind kind, const char* browserID, const std::string& name) {
        host.Raise({kind, browserID}, "com.velmo.browser.event." + name,
                   "<browserMessage><taskID ID=\"" + id + "\"/><msgID ID=\"" + id +
                       "\"/><transferType>local</transferType><transferItemList><transferItem src=\"/a.mov\" "
                       "dst=\"/b\"/></transferItemList></browserMessage>");
    };
    raise(Desk::PanelKind::kLibrary, "panel-1", "TransferRequest");
    raise(Desk::PanelKind::kMediaCollection, "panel-2", "CancelTransferRequest");
    for (const std::string& spelling : {id, std::string("3E550001-0000-4000-8000-000000000001")})
        EXPECT_EQ(work.AskerOf(spelling).value_or(Desk::Origin()).browserID, "panel-1") << spelling;
    EXPECT_FALSE(work.AskerOf("/a.mov"));
}

}  // namespace
