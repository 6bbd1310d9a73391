// Every session file, played on a host that is recorded: the recording plays to the same effects.

#include "assetconnector/host/XMLPlatform.h"
#include "recorder/Recorder.h"
#include "session/Player.h"
#include "session/SessionCheck.h"
#include "tests/support/Recordings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace {

using Session::Json;

/// Plays the inputs of a session file on a simulated host behind a recorder.
void PlayRecorded(const std::filesystem::path& file, const Recording::Options& options)
{
    std::unique_ptr<Recording::Recorder> recorder;
    Session::Player::Between between;
    between.services = [&](const AC::HostServices& services) {
        recorder = std::make_unique<Recording::Recorder>(services, options);
        return recorder->Services();
    };
    between.connectors = [&](std::size_t which, ALD::IAssetLibraryDispatcher* dispatcher) {
        return which == 0 ? recorder->CreateIngestGlintLibraryConnector(dispatcher)
                          : recorder->CreateIngestMediaCollectionConnector(dispatcher);
    };
    Session::Player player(Session::Style::kSession, {}, between);
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        // What no host does: it is done past the recorder.
        if (line.empty() || line.front() != '{' || line.find("readsFromDisk") != std::string::npos)
            continue;
        const Json json = Session::ParseJson(line);
        for (const char* const key :
             {"create", "release", "register", "panel", "station", "callback", "host", "ui", "call"})
            if (json.contains(key) && !json.contains("deliver") && !json.contains("post"))
                player.Play(player.Read(json));
    }
}

class RecordedSessions : public testing::TestWithParam<std::filesystem::path>
{
protected:
    void Check(bool masks)
    {
        const AC::XMLPlatform platform;
        const Recordings recordings;
        Recording::Options options = recordings.Options();
        options.masksContents = masks;
        PlayRecorded(GetParam(), options);
        for (const auto& file : recordings.Files())
            EXPECT_EQ(recordings.Difference(file), "") << file << '\n';
        // Nothing is missing either.
        for (const char* const effect : {"{\"notification\":", "{\"dispatcher\":", "{\"post\":"})
            EXPECT_EQ(CountOf(effect, recordings.Text()), CountOf(effect, TextOf(GetParam()))) << effect;
    }

    static std::string TextOf(const std::filesystem::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static std::size_t CountOf(std::string_view text, const std::string& in)
    {
        std::size_t count = 0;
        for (std::size_t at = in.find(text); at != std::string::npos; at = in.find(text, at + 1))
            ++count;
        return count;
    }
};

TEST_P(RecordedSessions, Replay)
{
    Check(false);
}

TEST_P(RecordedSessions, ReplayMasked)
{
    Check(true);
}

std::vector<std::filesystem::path> SessionFiles()
{
    std::vector<std::filesystem::path> files;
    for (const auto& each : std::filesystem::directory_iterator(TEST_DATA "/sessions"))
        files.push_back(each.path());
    return files;
}

std::string NameOf(const testing::TestParamInfo<std::filesystem::path>& file)
{
    std::string name = file.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, RecordedSessions, testing::ValuesIn(SessionFiles()), NameOf);

}  // namespace
