#pragma once

#include "desk/Bridge.h"
#include "desk/Host.h"
#include "desk/HostThread.h"
#include "desk/OwnAnswers.h"
#include "desk/RecordFile.h"
#include "desk/Server.h"
#include "desk/Tools.h"
#include "desk/Traffic.h"
#include "recorder/Recorder.h"

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace Desk {

struct DeskOptions
{
    std::filesystem::path pages;
    std::filesystem::path author;  ///< Of a panel under work; empty: there is none.
    std::filesystem::path record;  ///< A new file for the recording; empty: there is none.
    std::uint16_t port = 0;        ///< 0 for any.
    ServerLimits server;
    Bridge::Limits bridge;
    Traffic::Limits traffic;
    /// As Tools::Needs have them; called on the host's thread.
    boost::function<void()> end = [] {};
    boost::function<std::string(const std::string& session)> check = [](const std::string&) {
        return std::string("nobody can play it here");
    };
    /// Called on any thread with one line on what went wrong. Must not throw.
    boost::function<void(const std::string&)> problem = [](const std::string&) {};
};

/// A host with its pages, for as long as this object lives. The XML platform is initialised throughout, and
/// no other host is installed.
class RunningDesk final : private Connections
{
public:
    /// What a host is made with.
    struct HostNeeds
    {
        HostThread& thread;
        const Recording::Options& recording;
        const OwnAnswers& answers;
        boost::function<void()> changed;  ///< Told, on any thread, when Host::State does.
    };
    /// Makes the host, on its thread.
    using MakeHost = boost::function<std::unique_ptr<Host>(const HostNeeds& needs)>;

    /// \throws std::runtime_error without the pages, the port or the file to record; what making the host
    /// throws.
    RunningDesk(const DeskOptions& options, const MakeHost& makeHost);

    /// Ends the connections, then the host.
    ~RunningDesk() override;

    const Access& GetAccess() const noexcept { return mServer->GetAccess(); }
    std::uint16_t Port() const noexcept { return mServer->Port(); }

    /// Runs something on the host's thread, and behind it what it posted at stations.
    void Post(boost::function<void(Host& host)> task);

    /// As Post, and waits for it. Not on the host's thread.
    /// \throws What the task throws.
    void Run(const boost::function<void(Host& host)>& task);

private:
    void OnText(const LinkRef& link, std::string text) override;
    void OnGone(const LinkRef& link, bool isForGood) override;

    void OnReport(const std::string& report) override;

    void BeginHost(const DeskOptions& options, const MakeHost& makeHost);
    void DeliverPosted();
    void TakeRecording(const std::string& lines);
    /// Tells pages soon how things stand; several changes are told once.
    void Changed();
    Session::Json State();
    void EndHost();

    const boost::function<void(const std::string&)> mProblem;
    const std::string mRecordName;
    const bool mHasAuthor;
    std::optional<RecordFile> mRecord;
    std::atomic<bool> mIsStateDue{false};
    std::atomic<bool> mIsEnding{false};
    std::atomic<int> mChecks{0};  ///< Selections that are played, or wait to be.
    Traffic mTraffic;
    OwnAnswers mAnswers{mTraffic};
    HostThread mWorker;  ///< For what takes longer than the host may wait.
    HostThread mThread;
    std::unique_ptr<Host> mHost;  ///< Host, tools and bridge are the thread's.
    std::optional<Tools> mTools;
    boost::shared_ptr<Bridge> mBridge;
    std::optional<Server> mServer;
};

}  // namespace Desk
