#pragma once

#include "recorder/Recorder.h"
#include "session/SessionCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// A folder of recordings, empty at first and removed at the end.
class Recordings
{
public:
    Recordings()
    {
        std::string name = testing::UnitTest::GetInstance()->current_test_info()->test_suite_name();
        name += '.' + std::string(testing::UnitTest::GetInstance()->current_test_info()->name());
        std::replace(name.begin(), name.end(), '/', '-');
        mFolder = std::filesystem::temp_directory_path() / ("recordings-" + name);
        std::filesystem::remove_all(mFolder);
    }
    ~Recordings()
    {
        std::error_code ignored;
        std::filesystem::remove_all(mFolder, ignored);
    }
    Recordings(const Recordings&) = delete;
    Recordings& operator=(const Recordings&) = delete;

    const std::filesystem::path& Folder() const { return mFolder; }

    Recording::Options Options() const
    {
        Recording::Options options;
        options.folder = mFolder;
        options.onTrouble = [](const std::string& trouble) { ADD_FAILURE() << trouble; };
        return options;
    }

    std::vector<std::filesystem::path> Files() const
    {
        std::vector<std::filesystem::path> files;
        for (const auto& each : std::filesystem::directory_iterator(mFolder))
            files.push_back(each.path());
        std::sort(files.begin(), files.end());
        return files;
    }

    std::string Text() const
    {
        std::stringstream text;
        for (const auto& file : Files())
            text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    }

    /// \return What `replay --check` says of the file; empty when all is the same.
    static std::string Difference(const std::filesystem::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return Difference(stream);
    }
    static std::string Difference(std::istream& stream)
    {
        Session::SessionCheck check;
        try {
            Session::PlaySession(stream, Session::Style::kSession, check);
        } catch (const Session::SessionError& error) {
            return "line " + std::to_string(error.LineNumber()) + ": " + error.what();
        }
        if (check.LostAt())
            return "lost at line " + std::to_string(*check.LostAt());
        if (!check.FirstDifference())
            return {};
        const auto& [line, expected, actual] = *check.FirstDifference();
        return "line " + std::to_string(line) + "\nexpected: " + expected + "\nactual:   " + actual;
    }

private:
    std::filesystem::path mFolder;
};
