#pragma once

#include "assetconnector/host/XMLPlatform.h"
#include "desk/play/PlayedHost.h"
#include "session/SessionCheck.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

inline const std::string kEvent = "com.velmo.browser.event.";
inline const Desk::Origin kPage{Desk::PanelKind::kLibrary, "panel-7"};
inline const Desk::Origin kOther{Desk::PanelKind::kMediaCollection, "panel-8"};
constexpr std::chrono::milliseconds kLine{300};
constexpr std::chrono::milliseconds kStarted{900};
constexpr std::chrono::milliseconds kLong{100000};

/// Time that passes when it is told to.
class HandClock final : public Desk::Timer
{
public:
    void PostAfter(std::chrono::milliseconds delay, Task task) override
    {
        mTasks.emplace(mNow + delay, std::move(task));
    }
    std::chrono::steady_clock::time_point Now() const override { return mNow; }

    void Pass(std::chrono::milliseconds time)
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

struct PlayedPanel final : ReferenceHost::Panel
{
    void OnNotification(const std::string& type, const std::string& data) override
    {
        told.emplace_back(type, data);
    }

    std::vector<std::pair<std::string, std::string>> told;
};

inline std::string Attribute(const std::string& xml, const std::string& element)
{
    const std::string start = '<' + element + " ID=\"";
    const std::size_t begin = xml.find(start);
    return begin == std::string::npos
               ? "none"
               : xml.substr(begin + start.size(), xml.find('"', begin + start.size()) - begin - start.size());
}

/// \param number Of the message and the task.
inline std::string Message(int number, const std::string& content, const std::string& browserID = "panel-7")
{
    const std::string tail = "-0000-4000-8000-00000000000" + std::to_string(number);
    return R"(<browserMessage><browserID ID=")" + browserID + R"("/><taskID ID="7a5c0000)" + tail +
           R"("/><msgID ID="3e550000)" + tail + "\"/>" + content + "</browserMessage>";
}

inline std::string PanelLine(const std::string& name, const std::string& xml)
{
    return Session::Json{{"panel", kEvent + name}, {"data", xml}}.dump() + '\n';
}

inline std::string ProgressLine(int number, int percentage)
{
    const std::string tail = "-0000-4000-8000-00000000000" + std::to_string(number);
    return Session::Json{{"callback", "OnTransferProgress"},
                         {"to", "library"},
                         {"args", {"7a5c0000" + tail, "3E550000" + tail, percentage}}}
               .dump() +
           '\n';
}

inline const std::string kStart = R"({"host": {"quiet": ["PlexaManager::AddTandemEventListener"]}}
{"create": "library"}
{"register": true}
)";
inline const std::string kNews =
    R"({"callback": "OnIngestStarted", "to": "library", "args": ["7a5c0009-0000-4000-8000-000000000009"]})"
    "\n";
inline std::string List(const std::string& items)
{
    return "<renameItemList>" + items + "</renameItemList>";
}

inline const std::string kItem = List(R"(<renameItem src="/a.mov" newName="b.mov"/>)");

/// \return The lines of a session that hold an object, the desk's own comments included.
inline std::vector<Session::Json> LinesOf(std::istream& session)
{
    std::vector<Session::Json> lines;
    for (std::string line; std::getline(session, line);)
        if (line[0] == '{' || line.compare(0, 8, "# desk: ") == 0)
            lines.push_back(Session::Json::parse(line.substr(line.find('{'))));
    return lines;
}

inline std::ifstream Open(const std::string& name)
{
    return std::ifstream(TEST_DATA "/sessions/" + name);
}

class PlayedHostTest : public ::testing::Test
{
protected:
    void Play(const std::string& session, bool isStepping = false)
    {
        std::istringstream file(session);
        Play(file, isStepping);
    }

    void Play(std::istream& session, bool isStepping = false)
    {
        host.reset();
        recording.clear();
        panel->told.clear();
        Desk::PlayedHost::Options options;
        options.pace.isStepping = isStepping;
        options.recording.sink = [this](const std::string& lines) { recording += lines; };
        options.changed = [this] { ++changes; };
        host.emplace(Desk::ReadScript(session, "day.jsonl"), timer, options);
        EXPECT_EQ(host->State()["play"]["hasBegun"], false);
        timer.Pass(kLong);
        host->OnPanel();
        host->Attach(panel);
    }

    Session::Json State() const { return host->State().at("play"); }
    void Raise(const Desk::Origin& asker, const std::string& name, const std::string& xml)
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

    /// \return What the recording holds behind that key, line by line.
    std::vector<std::string> Recorded(const std::string& key)
    {
        host->FlushRecording();
        std::vector<std::string> found;
        std::istringstream lines(recording);
        for (const Session::Json& line : LinesOf(lines))
            if (line.contains(key))
                found.push_back(line[key].is_string() ? line[key].get<std::string>() : line[key].dump());
        return found;
    }

    /// Ends the host. \return What a replay of its recording does otherwise.
    std::string Difference()
    {
        host.reset();
        std::istringstream file(recording);
        Session::SessionCheck check;
        Session::PlaySession(file, Session::Style::kSession, check);
        const auto& found = check.FirstDifference();
        return found ? "expected: " + found->expected + "\nactual:   " + found->actual : std::string();
    }

    const AC::XMLPlatform platform;
    HandClock timer;
    std::string recording;  ///< Whole when the host is gone.
    int changes = 0;
    boost::shared_ptr<PlayedPanel> panel = boost::make_shared<PlayedPanel>();
    std::optional<Desk::PlayedHost> host;
};
