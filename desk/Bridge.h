#pragma once

#include "desk/Frames.h"
#include "desk/Host.h"
#include "desk/Link.h"
#include "desk/NotificationLog.h"
#include "reference_host/PanelEvents.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>

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

    /// \param host Outlives what is called here, not the object: it may hold the bridge as its panel.
    Bridge(Host& host, const Limits& limits) : mHost(host), mLimits(limits), mLog(limits.log) {}

    /// What came from a page; ends with Link::ReadOn.
    /// \throws As Host::Raise; the request counts as heard.
    void OnText(const LinkRef& link, const std::string& text);

    /// The connection is gone. \param isForGood The page said that it does not come back.
    void OnGone(const LinkRef& link, bool isForGood);

    void OnNotification(const std::string& type, const std::string& data) override;

private:
    struct Session
    {
        std::string id;
        Origin origin;
        std::uint64_t heard = 0;  ///< The number of the last request.
        LinkRef link;             ///< Null while the page is away.
    };
    using Sessions = std::list<Session>;

    void Take(const LinkRef& link, const Hello& hello);
    void Take(const LinkRef& link, const Raise& raise);
    void Take(const LinkRef& link, const FrameFault& fault);
    void Take(const LinkRef& /*link*/, const UnknownFrame& /*frame*/) {}

    /// \return The session that the hello goes on with, if nothing that it missed is lost; else end().
    Sessions::iterator FindResumed(const Hello& hello);
    Sessions::iterator BeginSession(PanelKind kind);
    Sessions::iterator FindByLink(const LinkRef& link);

    /// Tells each page which panels are connected.
    void SendState();
    void ForgetOldest();

    Host& mHost;
    const Limits mLimits;
    NotificationLog mLog;
    Sessions mSessions;  ///< Those away in the order in which they went, then the connected ones.
    std::uint64_t mPanelCount = 0;
};

}  // namespace Desk
