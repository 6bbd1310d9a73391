#include "desk/Bridge.h"

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/Unicode.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>
#include <variant>

namespace Desk {
namespace {

/// More than pass while one is held.
constexpr std::size_t kMostUnderWay = 4096;

std::string FreshID()
{
    return ferrite::utility::UTF16to8(ferrite::utility::Guid::CreateUnique().AsString());
}

nlohmann::json FaultsOf(const Disturbance& toPage, const Disturbance& fromPage)
{
    const Faults::Settings& settings = toPage.GetSettings();
    nlohmann::json kinds = nlohmann::json::array();
    for (const Fault kind : settings.kinds)
        kinds.push_back(NameOf(kind));
    return {{"seed", settings.seed},
            {"percent", settings.percent},
            {"kinds", kinds},
            {"count", toPage.Count() + fromPage.Count()}};
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
    if (mTools.Leave(link))
        return;
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
            Tell(session, frame, type, data);
}

void Bridge::Tell(const Session& session, const Frame& frame, const std::string& type,
                  const std::string& data)
{
    if (!session.toPage)
        return session.link->Send(frame);
    session.toPage->Take([link = session.link, frame, type, data, number = mLog.Last()](Faults* faults) {
        link->Send(faults == nullptr ? frame : WriteNotification(type, faults->Garbled(data), number));
    });
}

void Bridge::Take(const LinkRef& link, const Hello& hello)
{
    if (FindByLink(link) != mSessions.end() || mTools.Has(link))
        return link->Close(Closing::kPolicy, "a second hello on a connection");
    auto session = FindResumed(hello);
    const bool isResumed = session != mSessions.end();
    if (isResumed) {
        if (session->link)
            session->link->Close(Closing::kElsewhere, "the page is connected elsewhere");
        mSessions.splice(mSessions.end(), mSessions, session);
        session->underWay.clear();  // the page raises them again
    } else {
        session = BeginSession(hello.kind);
    }
    session->link = link;
    const std::uint64_t number = isResumed ? hello.heard : mLog.Last();
    link->Send(WriteWelcome(
        {session->id, session->origin.browserID, mHost.Handles(), isResumed, number, session->heard}));
    mLog.ForEachBehind(number, [&link](const Frame& frame) { link->Send(frame); });
    mState.reset();  // this page was told none
    SendState();
    mHost.OnPanel();
}

void Bridge::Take(const LinkRef& link, const Raise& raise)
{
    const auto session = FindByLink(link);
    if (session == mSessions.end())
        return link->Close(Closing::kPolicy, "the first frame must be a hello");
    if (!session->fromPage)
        return Receive(link, raise);
    if (raise.number > session->heard)
        session->underWay.insert(raise.number);
    if (session->underWay.size() > kMostUnderWay)
        session->underWay.erase(session->underWay.begin());  // dropped
    const boost::shared_ptr<Disturbance> disturbance = session->fromPage;
    disturbance->Take([this, link, raise](Faults* faults) {
        Receive(link, {raise.type, faults == nullptr ? raise.xml : faults->Garbled(raise.xml), raise.number});
    });
}

void Bridge::Receive(const LinkRef& link, const Raise& raise)
{
    const auto session = FindByLink(link);
    if (session == mSessions.end())
        return;  // gone meanwhile
    const bool isOvertaken = session->underWay.erase(raise.number) > 0;
    if (raise.number <= session->heard && !isOvertaken)
        return;  // sent again, since the page had not been told
    session->heard = std::max(session->heard, raise.number);
    link->Send(WriteHeard(raise.number));
    const Origin asker = session->origin;  // the session may end meanwhile
    mHost.Raise(asker, raise.type, raise.xml);
}

void Bridge::Take(const LinkRef& link, const ToolHello& hello)
{
    if (FindByLink(link) != mSessions.end() || mTools.Has(link))
        return link->Close(Closing::kPolicy, "a second hello on a connection");
    mTools.Join(link, hello);
    link->Send(StateFrame());
}

void Bridge::Take(const LinkRef& link, const Command& command)
{
    if (!mTools.Has(link))
        return link->Close(Closing::kPolicy, "commands are for pages of the kind desk");
    mTools.Do(link, command);
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
    return mSessions.insert(mSessions.end(), {FreshID(), {kind, browserID}, 0, {}, {}, {}, {}});
}

Bridge::Sessions::iterator Bridge::FindByLink(const LinkRef& link)
{
    return std::find_if(mSessions.begin(), mSessions.end(),
                        [&link](const Session& session) { return session.link == link; });
}

Frame Bridge::StateFrame() const
{
    nlohmann::json state = mMore();
    nlohmann::json& panels = state["panels"] = nlohmann::json::array();
    for (const Session& session : mSessions)
        if (session.link)
            panels.push_back({{"browserID", session.origin.browserID},
                              {"kind", NameOf(session.origin.kind)},
                              {"faults", session.toPage ? FaultsOf(*session.toPage, *session.fromPage)
                                                        : nlohmann::json()}});
    return WriteState(state);
}

void Bridge::SendState()
{
    const Frame frame = StateFrame();
    if (mState && *mState == *frame)
        return;
    mState = frame;
    for (const Session& session : mSessions)
        if (session.link)
            session.link->Send(frame);
    mTools.Send(frame);
}

bool Bridge::Disturb(const std::string& browserID, const Faults::Settings& settings)
{
    const auto session = std::find_if(mSessions.begin(), mSessions.end(), [&browserID](const Session& each) {
        return each.origin.browserID == browserID;  // it may be away for a moment
    });
    if (session == mSessions.end())
        return false;
    for (const auto& before : {std::exchange(session->toPage, {}), std::exchange(session->fromPage, {})})
        if (before)
            before->Flush();
    if (settings.percent > 0 && !settings.kinds.empty()) {
        const auto make = [&](std::uint32_t seed, const char* member, const std::string& direction) {
            const auto disconnect = [this, browserID] {
                for (const Session& each : mSessions)
                    if (each.link && each.origin.browserID == browserID)
                        each.link->Close(Closing::kFault, "a fault that somebody asked for");
            };
            const auto mark = [this, member, direction, browserID](const std::string& fault) {
                mHost.Mark(member, fault + direction + browserID);
            };
            Faults::Settings own = settings;
            own.seed = seed;
            return boost::make_shared<Disturbance>(own, mTimer, disconnect, mark);
        };
        session->toPage = make(settings.seed, "last", " on the way to ");
        session->fromPage = make(settings.seed + 1, "note", " on the way from ");
    }
    SendState();
    return true;
}

void Bridge::ForgetOldest()
{
    const auto away = std::count_if(mSessions.begin(), mSessions.end(),
                                    [](const Session& session) { return session.link == nullptr; });
    if (static_cast<std::size_t>(away) > mLimits.mostAway)
        mSessions.pop_front();
}

}  // namespace Desk
