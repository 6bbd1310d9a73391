#pragma once

#include "desk/Disturbance.h"
#include "desk/Frames.h"
#include "desk/Host.h"
#include "desk/Link.h"
#include "desk/NotificationLog.h"
#include "desk/Tools.h"
#include "reference_host/PanelEvents.h"

#include <boost/function.hpp>

#include <cstddef>
#include <cstdint>
#include <list>
#include <set>
#include <string>
#include <utility>

namespace Desk {

/// Between the host and its pages. A page has a session, which goes on when its connection is made again.
/// Every page hears every notification under the same number, so that a frame is written once.
/// Everything runs on the host's thread.
class Bridge final : public ReferenceHost::Panel
{
public:
    struct Limits
    {
        NotificationLog::Limits log;
        std::size_t mostAway = 64;  ///< Sessions without a connection; the oldest go.
    };

    /// \param host, timer Outlive what is called here, not the object: the host may hold the bridge as its
    /// panel. \param tools Of the pages that are none of a panel; as the host. \param more Gives the members
    /// of the frame "state" beside those of the pages.
    Bridge(Host& host, Timer& timer, Tools& tools, boost::function<nlohmann::json()> more,
           const Limits& limits)
        : mHost(host), mTimer(timer), mTools(tools), mMore(std::move(more)), mLimits(limits), mLog(limits.log)
    {
    }

    /// What came from a page; ends with Link::ReadOn.
    /// \throws As Host::Raise; the request counts as heard.
    void OnText(const LinkRef& link, const std::string& text);

    /// The connection is gone. \param isForGood The page said that it does not come back.
    void OnGone(const LinkRef& link, bool isForGood);

    void OnNotification(const std::string& type, const std::string& data) override;

    /// Disturbs what passes between host and page from now on, both ways; without kinds or at 0 percent no
    /// more. \return False when there is no such page, connected or away.
    bool Disturb(const std::string& browserID, const Faults::Settings& settings);

    /// Tells each page how things stand, unless they stand as they did.
    void SendState();

private:
    struct Session
    {
        std::string id;
        Origin origin;
        std::uint64_t heard = 0;                          ///< The number of the last request.
        std::set<std::uint64_t> underWay;                 ///< Requests that later ones may overtake.
        LinkRef link;                                     ///< Null while the page is away.
        boost::shared_ptr<Disturbance> toPage, fromPage;  ///< Null: nothing disturbs it.
    };
    using Sessions = std::list<Session>;

    void Take(const LinkRef& link, const Hello& hello);
    void Take(const LinkRef& link, const Raise& raise);
    void Take(const LinkRef& link, const ToolHello& hello);
    void Take(const LinkRef& link, const Command& command);
    void Take(const LinkRef& link, const FrameFault& fault);
    void Take(const LinkRef& /*link*/, const UnknownFrame& /*frame*/) {}

    /// \return The session that the hello goes on with, if nothing that it missed is lost; else end().
    Sessions::iterator FindResumed(const Hello& hello);
    Sessions::iterator BeginSession(PanelKind kind);
    Sessions::iterator FindByLink(const LinkRef& link);

    /// What the page raises reaches the host.
    void Receive(const LinkRef& link, const Raise& raise);
    void Tell(const Session& session, const Frame& frame, const std::string& type, const std::string& data);
    Frame StateFrame() const;
    void ForgetOldest();

    Host& mHost;
    Timer& mTimer;
    Tools& mTools;
    const boost::function<nlohmann::json()> mMore;
    const Limits mLimits;
    NotificationLog mLog;
    Sessions mSessions;  ///< Those away in the order in which they went, then the connected ones.
    std::uint64_t mPanelCount = 0;
    Frame mState;  ///< What all pages were told last.
};

}  // namespace Desk
