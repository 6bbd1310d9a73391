#include "desk/Bridge.h"

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/Unicode.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>
#include <variant>

namespace Desk {
namespace {

std::string FreshID()
{
    return ferrite::utility::UTF16to8(ferrite::utility::Guid::CreateUnique().AsString());
}

/// Calls Link::ReadOn at the end, whatever happens.
class ReadOnScope
{
public:
    explicit ReadOnScope(Link& link) : mLink(link) {}
    ~ReadOnScope() { mLink.ReadOn(); }
    ReadOnScope(const ReadOnScope&) = delete;
    ReadOnScope& operator=(const ReadOnScope&) = delete;

private:
    Link& mLink;
};

}  // namespace

void Bridge::OnText(const LinkRef& link, const std::string& text)
{
    if (link->IsClosed())
        return;
    const ReadOnScope scope(*link);
    std::visit([this, &link](const auto& frame) { Take(link, frame); }, ReadPageFrame(text));
}

void Bridge::OnGone(const LinkRef& link, bool isForGood)
{
    const auto session = FindByLink(link);
    if (session == mSessions.end())
        return;
    session->link.reset();
    if (isForGood) {
        mSessions.erase(session);
    } else {
        const auto connected = std::find_if(mSessions.begin(), mSessions.end(),
                                            [](const Session& other) { return other.link != nullptr; });
        mSessions.splice(connected, mSessions, session);
        ForgetOldest();
    }
    SendState();
}

void Bridge::OnNotification(const std::string& type, const std::string& data)
{
    const Frame frame = WriteNotification(type, data, mLog.Last() + 1);
    mLog.Add(frame);
    for (const Session& session : mSessions)
        if (session.link)
            session.link->Send(frame);
}

void Bridge::Take(const LinkRef& link, const Hello& hello)
{
    if (FindByLink(link) != mSessions.end())
        return link->Close(Closing::kPolicy, "a second hello on a connection");
    auto session = FindResumed(hello);
    const bool isResumed = session != mSessions.end();
    if (isResumed) {
        if (session->link)
            session->link->Close(Closing::kElsewhere, "the page is connected elsewhere");
        mSessions.splice(mSessions.end(), mSessions, session);
    } else {
        session = BeginSession(hello.kind);
    }
    session->link = link;
    const std::uint64_t number = isResumed ? hello.heard : mLog.Last();
    link->Send(WriteWelcome(
        {session->id, session->origin.browserID, mHost.Handles(), isResumed, number, session->heard}));
    mLog.ForEachBehind(number, [&link](const Frame& frame) { link->Send(frame); });
    SendState();
}

void Bridge::Take(const LinkRef& link, const Raise& raise)
{
    const auto session = FindByLink(link);
    if (session == mSessions.end())
        return link->Close(Closing::kPolicy, "the first frame must be a hello");
    if (raise.number <= session->heard)
        return;  // sent again, since the page had not been told
    session->heard = raise.number;
    link->Send(WriteHeard(raise.number));
    const Origin asker = session->origin;  // the session may end meanwhile
    mHost.Raise(asker, raise.type, raise.xml);
}

void Bridge::Take(const LinkRef& link, const FrameFault& fault)
{
    link->Close(Closing::kPolicy, fault.reason);
}

Bridge::Sessions::iterator Bridge::FindResumed(const Hello& hello)
{
    if (!hello.session || !mLog.HasAllBehind(hello.heard))
        return mSessions.end();
    return std::find_if(mSessions.begin(), mSessions.end(), [&hello](const Session& session) {
        return session.id == *hello.session && session.origin.kind == hello.kind;
    });
}

Bridge::Sessions::iterator Bridge::BeginSession(PanelKind kind)
{
    const std::string browserID = "panel-" + std::to_string(++mPanelCount);
    return mSessions.insert(mSessions.end(), {FreshID(), {kind, browserID}, 0, nullptr});
}

Bridge::Sessions::iterator Bridge::FindByLink(const LinkRef& link)
{
    return std::find_if(mSessions.begin(), mSessions.end(),
                        [&link](const Session& session) { return session.link == link; });
}

void Bridge::SendState()
{
    nlohmann::json panels = nlohmann::json::array();
    for (const Session& session : mSessions)
        if (session.link)
            panels.push_back(
                {{"browserID", session.origin.browserID}, {"kind", NameOf(session.origin.kind)}});
    const Frame frame = WriteState({{"panels", panels}});
    for (const Session& session : mSessions)
        if (session.link)
            session.link->Send(frame);
}

void Bridge::ForgetOldest()
{
    const auto away = std::count_if(mSessions.begin(), mSessions.end(),
                                    [](const Session& session) { return session.link == nullptr; });
    if (static_cast<std::size_t>(away) > mLimits.mostAway)
        mSessions.pop_front();
}

}  // namespace Desk
