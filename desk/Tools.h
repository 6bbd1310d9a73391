#pragma once

#include "desk/Faults.h"
#include "desk/Frames.h"
#include "desk/Host.h"
#include "desk/HostThread.h"
#include "desk/Traffic.h"

#include <boost/function.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Desk {

/// The host page and the traffic view: what they see, and what they may do. Used on the host's thread.
class Tools
{
public:
    struct Needs
    {
        Host& host;
        Timer& timer;
        Traffic& traffic;
        /// As Bridge::Disturb.
        boost::function<bool(const std::string& browserID, const Faults::Settings& settings)> disturb;
        /// How things stand has changed.
        boost::function<void()> changed;
        /// Ends the program.
        boost::function<void()> end;
        /// Plays a session with its effects compared, and tells later, on any thread, why it does not stand
        /// alone; empty: it does.
        boost::function<void(const std::string& session, boost::function<void(const std::string& why)> told)>
            check;
    };

    /// \param needs Outlive this object.
    explicit Tools(Needs needs);

    /// Takes in a page; until Leave.
    void Join(const LinkRef& link, const ToolHello& hello);

    /// \return False when the page is none of these.
    bool Leave(const LinkRef& link);

    bool Has(const LinkRef& link) const;

    void Send(const Frame& frame) const;

    /// Does what the page wants, and tells it that it is done or why not.
    void Do(const LinkRef& link, const Command& command);

    /// \return The member "exit" of the frame "state".
    nlohmann::json ExitState();

private:
    using Json = nlohmann::json;

    /// To whom a command is answered.
    struct Asker
    {
        LinkRef link;
        std::uint64_t number;
    };
    /// \return The value; nothing when it is told later.
    using Function = std::optional<Json> (Tools::*)(const Json& with, const Asker& asker);
    struct Row
    {
        const char* name;
        Function function;
    };
    static const Row kCommands[];

    std::optional<Json> Callback(const Json& with, const Asker& asker);
    std::optional<Json> Notify(const Json& with, const Asker& asker);
    std::optional<Json> Exit(const Json& with, const Asker& asker);
    std::optional<Json> Step(const Json& with, const Asker& asker);
    std::optional<Json> RaiseIt(const Json& with, const Asker& asker);
    std::optional<Json> Pace(const Json& with, const Asker& asker);
    std::optional<Json> SetFaults(const Json& with, const Asker& asker);
    std::optional<Json> Inspect(const Json& with, const Asker& asker);
    std::optional<Json> Save(const Json& with, const Asker& asker);

    Playback& GetPlayback() const;
    void HearRefusal();

    const Needs mNeeds;
    std::vector<LinkRef> mPages;
    bool mIsExitAsked = false;
    std::shared_ptr<char> mExit;  ///< The timer's tasks of earlier exits do nothing.
    std::string mRefusedBy;
};

}  // namespace Desk
