#pragma once

#include "desk/Bridge.h"
#include "desk/Link.h"
#include "desk/LiveHost.h"
#include "desk/Tools.h"
#include "desk/Traffic.h"
#include "tests/desk/Frames.h"
#include "tests/desk/WorkLog.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

/// A text with a path and a media info, for requests that want one of them.
constexpr const char* kThing =
    "<browserMessage><filePath "
    "path=\"/a.mov\"/><assetMediaInfoList><assetMediaInfo><filePath>/a.mov</filePath>"
    "</assetMediaInfo></assetMediaInfoList></browserMessage>";

inline std::string BrowserIDIn(const std::string& xml)
{
    const std::string start = "<browserID ID=\"";
    const std::size_t found = xml.find(start);
    if (found == std::string::npos)
        return "none";
    const std::size_t begin = found + start.size();
    return xml.substr(begin, xml.find('"', begin) - begin);
}

/// A page as the host sees it.
class Page
{
public:
    explicit Page(Desk::Bridge& bridge, const Desk::Link::Limits& limits = {})
        : link(boost::make_shared<Desk::Link>(limits)), mBridge(bridge)
    {
    }

    void Say(const std::string& text) { mBridge.OnText(link, text); }

    /// \return The welcome.
    nlohmann::json SayHello(const std::string& text)
    {
        Say(text);
        const std::vector<nlohmann::json> frames = Take();
        return frames.empty() ? nlohmann::json() : frames.front().value("welcome", nlohmann::json());
    }

    std::vector<nlohmann::json> Take()
    {
        std::vector<nlohmann::json> frames;
        while (const Desk::Frame frame = link->TakeFrame())
            frames.push_back(nlohmann::json::parse(*frame));
        return frames;
    }

    /// \return Of each notification that came the last part of its identifier, and whom its header names.
    std::vector<std::string> TakeNotifications()
    {
        std::vector<std::string> told;
        for (const nlohmann::json& frame : Take()) {
            if (!frame.contains("notify"))
                continue;
            const std::string type = frame["notify"];
            told.push_back(type.substr(type.rfind('.') + 1) + " to " + BrowserIDIn(frame["xml"]));
        }
        return told;
    }

    int Code() const
    {
        const auto closing = link->GetClosing();
        return closing ? closing->code : 0;
    }

    const Desk::LinkRef link;

private:
    Desk::Bridge& mBridge;
};

/// Time passes by hand.
struct HandTimer final : Desk::Timer
{
    void PostAfter(std::chrono::milliseconds /*delay*/, Task task) override { tasks.push_back(task); }

    void Pass()
    {
        for (const Task& task : std::exchange(tasks, {}))
            task();
    }

    std::vector<Task> tasks;
};

class BridgeFixture : public ::testing::Test
{
protected:
    BridgeFixture() { host.Attach(bridge); }

    static Desk::Bridge::Limits SmallLimits()
    {
        Desk::Bridge::Limits limits;
        limits.log.mostFrames = 3;
        limits.mostAway = 2;
        return limits;
    }

    boost::shared_ptr<Desk::Bridge> MakeBridge(const Desk::Bridge::Limits& limits)
    {
        return boost::make_shared<Desk::Bridge>(
            host, timer, tools, [] { return nlohmann::json::object(); }, limits);
    }

    void TellNews(int count)
    {
        for (int i = 0; i < count; ++i)
            bridge->OnNotification("news", "<n/>");
    }

    Recording::Options Recorded()
    {
        Recording::Options recording;
        recording.sink = [this](const std::string& lines) { traffic.Take(lines); };
        return recording;
    }

    Desk::Traffic traffic{{}, [] {}};
    WorkLog work;
    Desk::LiveHost host{work, Recorded()};
    HandTimer timer;
    Desk::Tools tools{Desk::Tools::Needs{
        host, timer, traffic,
        [this](const std::string& browserID, const Desk::Faults::Settings& settings) {
            return bridge->Disturb(browserID, settings);
        },
        [] {}, [this] { ++ends; },
        [](const std::string& session, const boost::function<void(const std::string&)>& told) {
            told(session.find("TransferRequest") == std::string::npos ? "" : "line 1: no");
        }}};
    int ends = 0;
    boost::shared_ptr<Desk::Bridge> bridge = MakeBridge(SmallLimits());
};
