#pragma once

#include "desk/Bridge.h"
#include "desk/Host.h"
#include "desk/HostThread.h"
#include "desk/Server.h"

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace Desk {

struct DeskOptions
{
    std::filesystem::path pages;
    std::uint16_t port = 0;  ///< 0 for any.
    ServerLimits server;
    Bridge::Limits bridge;
    /// Called on the host's thread with one line on what went wrong there. Must not throw.
    boost::function<void(const std::string&)> problem = [](const std::string&) {};
};

/// A host with its pages, for as long as this object lives. The XML platform is initialised throughout, and
/// no other host is installed.
class RunningDesk final : private Connections
{
public:
    /// Makes the host, on its thread.
    using MakeHost = boost::function<std::unique_ptr<Host>(HostThread& thread)>;

    /// \throws std::runtime_error without the pages or the port; what making the host throws.
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

    void DeliverPosted();
    void EndHost();

    HostThread mThread;
    std::unique_ptr<Host> mHost;  ///< Host and bridge are the thread's.
    boost::shared_ptr<Bridge> mBridge;
    std::optional<Server> mServer;
};

}  // namespace Desk
