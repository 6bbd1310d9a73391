// The files of a recording: which there are, and what becomes of them when they cannot be written.

#include "assetconnector/connectors/EventCatalogue.h"
#include "tests/support/RecordedHost.h"

#include <gmock/gmock.h>

#include <csignal>
#include <sstream>
#include <stdexcept>
#include <thread>

#if defined(__unix__)
#include <sys/resource.h>
#endif

namespace {

class RecordedFilesTest : public RecordedHost
{
protected:
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& file : recordings.Files())
            names.push_back(file.filename().string());
        return names;
    }
    void Call() { library->OnIngestStarted({}); }

    /// Goes on until there is a file again.
    void CallUntilWritten()
    {
        for (int i = 0; i < 100 && recorder->CurrentFile().empty(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            Call();
            recorder->Flush();
        }
        EXPECT_FALSE(recorder->CurrentFile().empty());
    }
};

TEST_F(RecordedFilesTest, OldOnesOfThisNameAreRemoved)
{
    options.fileBytes = 1;
    options.filesKept = 3;
    std::filesystem::create_directories(recordings.Folder());
    std::vector<std::string> expected{"session-0000001.jsonl", "session-000001.json",
                                      "session-18446744073709551615.jsonl", "session-2-000001.jsonl",
                                      "session-x00001.jsonl"};
    for (const auto& name : expected)
        std::ofstream(recordings.Folder() / name) << "of somebody else";
    for (const char* const name : {"session-000001.jsonl", "session-000006.jsonl"})
        std::ofstream(recordings.Folder() / name) << "of an earlier run";
    BeginWithConnectors();
    EXPECT_EQ(recorder->CurrentFile().filename(), "session-000007.jsonl");
    Call();
    End();
    // Nothing, two connectors made, a call, two connectors released.
    for (const char* const name : {"session-000010.jsonl", "session-000011.jsonl", "session-000012.jsonl"}) {
        expected.emplace_back(name);
        EXPECT_EQ(Recordings::Difference(recordings.Folder() / name), "") << name;
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(Names(), expected);
}

TEST_F(RecordedFilesTest, FolderThatIsAFileIsTroubleOnce)
{
    std::ofstream(recordings.Folder()) << "a file";
    BeginWithConnectors();
    for (int i = 0; i < 3; ++i) {
        Call();
        recorder->Flush();
    }
    EXPECT_EQ(troubles.size(), 1U);
    EXPECT_EQ(recorder->CurrentFile(), "");
    std::filesystem::remove(recordings.Folder());
    CallUntilWritten();
    End();
    EXPECT_EQ(ExpectReplays(), 1U);
    EXPECT_EQ(CountOf(" lines before this file were lost\n"), 1U);
}

#if defined(__unix__)  // elsewhere a file that is open stays, and none can be kept from growing
TEST_F(RecordedFilesTest, FolderThatVanishesIsMadeAgain)
{
    options.fileBytes = 1;
    BeginWithConnectors();
    recorder->Flush();
    std::filesystem::remove_all(recordings.Folder());
    Call();
    End();
    EXPECT_EQ(ExpectReplays(), 3U);
    EXPECT_EQ(troubles, std::vector<std::string>());
}

TEST_F(RecordedFilesTest, FullDiskLosesLinesAndNothingElse)
{
    BeginWithConnectors();
    Call();
    recorder->Flush();
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit full = before;
    full.rlim_cur = std::filesystem::file_size(recorder->CurrentFile()) + 50;
    setrlimit(RLIMIT_FSIZE, &full);
    for (int i = 0; i < 5; ++i)
        Call();
    recorder->Flush();
    full.rlim_cur = 10;  // nothing of any file
    setrlimit(RLIMIT_FSIZE, &full);
    for (int i = 0; i < 30; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        Call();
        recorder->Flush();
    }
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, old);
    EXPECT_EQ(troubles.size(), 1U);
    EXPECT_EQ(recorder->CurrentFile(), "");
    EXPECT_EQ(Names().size(), 1U);
    CallUntilWritten();
    End();
    EXPECT_EQ(Names(), (std::vector<std::string>{"session-000001.jsonl", "session-000002.jsonl"}));
    ExpectReplays();
    EXPECT_EQ(CountOf(" lines before this file were lost\n"), 1U);
}
#endif

TEST_F(RecordedFilesTest, OverflowSaysWhatIsLost)
{
    options.bufferBytes = 20000;
    BeginWithConnectors();
    Call();
    recorder->Flush();
    const UTF16String large(options.bufferBytes, u'x');
    for (int i = 0; i < 2; ++i) {
        library->OnFileOffLine({}, {}, {large});
        recorder->Flush();
        Raise(AC::kPlexaEventType_ReadXMPFromDisk,
              kReadRequest);  // and that is what the next file begins with
        recorder->Flush();
    }
    library->OnFileOffLine({}, {}, {large});
    End();
    const auto files = recordings.Files();
    ASSERT_EQ(files.size(), 4U);
    for (const auto& file : files) {
        std::ifstream lines(file);
        std::size_t lost = 0;
        std::size_t number = 0;
        for (std::string line; std::getline(lines, line);) {
            ++number;
            if (line.compare(0, 8, "# lost: ") == 0)
                lost = number;
        }
        // The last one has the end of the connectors.
        EXPECT_EQ(Recordings::Difference(file),
                  file == files.back() ? "" : "lost at line " + std::to_string(lost));
        EXPECT_EQ(lost, file == files.back() ? 0 : number);
    }
    EXPECT_EQ(troubles.size(), 1U);
}

TEST_F(RecordedFilesTest, SlowDiskKeepsMemoryBounded)
{
    options.bufferBytes = 4096;
    BeginWithConnectors();
    for (int i = 0; i < 5000; ++i)  // faster than anybody writes
        Call();
    recorder->Flush();
    End();
    const auto files = recordings.Files();
    EXPECT_EQ(Recordings::Difference(files.back()), "");
    EXPECT_GT(CountOf("# lost: "), 0U);
    EXPECT_EQ(CountOf("# lost: "), files.size() - 1);
}

TEST_F(RecordedFilesTest, AFunctionGetsTheLinesInPlaceOfFiles)
{
    std::string lines;
    bool throws = false;
    options.sink = [&](const std::string& more) {
        if (throws)
            throw std::runtime_error("no");
        lines += more;
    };
    BeginWithConnectors();
    panel->act = [this] { recorder->Note("inside"); };
    Call();
    recorder->Note("outside");
    recorder->Flush();
    EXPECT_FALSE(std::filesystem::exists(recordings.Folder()));
    EXPECT_LT(lines.find("\"notification\""), lines.find("# inside\n"));
    EXPECT_LT(lines.find("# inside\n"), lines.find("# outside\n"));
    std::istringstream played(lines);

    throws = true;
    Call();
    recorder->Flush();
    EXPECT_EQ(troubles.size(), 1u);
    throws = false;
    lines.clear();
    Call();
    recorder->Flush();
    EXPECT_THAT(lines, testing::HasSubstr("were lost\n")) << "and the state is there again";
    EXPECT_THAT(lines, testing::HasSubstr("{\"create\":\"library\"}"));
    End();
    EXPECT_EQ(Recordings::Difference(played), "");
}

}  // namespace
