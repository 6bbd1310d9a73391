#include "desk/LiveHost.h"

#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "session/Operations.h"
#include "session/format/FormatError.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace Desk {
namespace {

using AC::IngestGlintLibraryConnector;
using AC::IngestMediaCollectionConnector;

bool IsHandledByBoth(const UTF16String& type)
{
    return IngestGlintLibraryConnector::Handles(type) && IngestMediaCollectionConnector::Handles(type);
}

/// Told by the media collection's connector alone, whoever asked.
constexpr std::string_view kOfCollectionAlone[] = {"OnInitMiniMetadata", "OnGetTargetBinPath"};

/// Gives a member a value for as long as it lives.
class AskerScope
{
public:
    AskerScope(const Origin*& member, const Origin& asker) : mMember(member), mBefore(member)
    {
        mMember = &asker;
    }
    ~AskerScope() { mMember = mBefore; }
    AskerScope(const AskerScope&) = delete;
    AskerScope& operator=(const AskerScope&) = delete;

private:
    const Origin*& mMember;
    const Origin* const mBefore;
};

}  // namespace

LiveHost::BrowserIDScope::BrowserIDScope(ReferenceHost::PanelEvents& events, std::string browserID)
    : mEvents(events), mBefore(events.GetBrowserID())
{
    mEvents.SetBrowserID(std::move(browserID));
}

LiveHost::BrowserIDScope::~BrowserIDScope()
{
    mEvents.SetBrowserID(std::move(mBefore));
}

LiveHost::LiveHost(Work& work, const Recording::Options& recording)
    : mWork(work), mHandles(work.Handles()), mRecorder(mServices.Services(), recording)
{
    mServices.GetPanelEvents().SetBrowserID({});
    AC::AddTandemEvents();
    SeatOf(PanelKind::kLibrary).connector = mRecorder.CreateIngestGlintLibraryConnector(nullptr);
    SeatOf(PanelKind::kMediaCollection).connector = mRecorder.CreateIngestMediaCollectionConnector(nullptr);
    for (Seat& seat : mSeats)
        seat.access = AC::Query<AC::IAssetConnectorPrivate>(seat.connector);
    mWork.Begin(*this);
}

void LiveHost::Attach(boost::shared_ptr<ReferenceHost::Panel> panel)
{
    mServices.GetPanelEvents().Attach(std::move(panel));
}

void LiveHost::Raise(const Origin& asker, const std::string& type, const std::string& xml)
{
    const UTF16String identifier = ferrite::utility::UTF8to16(type);
    const bool isHandledByBoth = IsHandledByBoth(identifier);
    for (const PanelKind kind : kPanelKinds) {
        ALD::IAssetLibraryDispatcher* const dispatcher =
            isHandledByBoth && kind != asker.kind ? &mIdle : &mWork.DispatcherOf(kind);
        SeatOf(kind).access->SetDispatcher(dispatcher);
    }
    const AskerScope scope(mAsker, asker);
    const Marks::Raising raising(mRecorder, asker, type, mHandles);
    mServices.GetPanelEvents().Raise(identifier, ferrite::utility::UTF8to16(xml));
    if (std::find(mHandles.begin(), mHandles.end(), type) != mHandles.end())
        mWork.Handle(asker, type, xml);
}

void LiveHost::Callback(const std::string& name, const Session::Json& arguments, std::optional<PanelKind> to)
{
    // The second argument of those that have one is the message.
    const std::optional<Origin> asker =
        arguments.is_array() && arguments.size() > 1 && arguments[1].is_string()
            ? mWork.AskerOf(arguments[1].get<std::string>())
            : std::nullopt;
    const std::string browserID = asker ? asker->browserID : std::string();
    const auto alone = std::find(std::begin(kOfCollectionAlone), std::end(kOfCollectionAlone), name);
    if (alone != std::end(kOfCollectionAlone))
        return Call(name, arguments, PanelKind::kMediaCollection, browserID);
    for (const PanelKind kind : kPanelKinds)
        if (to ? kind == *to : !asker || kind == asker->kind)
            Call(name, arguments, kind, browserID);
}

void LiveHost::Call(const std::string& name, const Session::Json& arguments, PanelKind kind,
                    const std::string& browserID)
{
    const Session::CallbackOperation* const callback = Session::FindCallback(name);
    if (callback == nullptr)
        throw Session::FormatError("there is no callback " + name);
    const BrowserIDScope scope(mServices.GetPanelEvents(), browserID);
    Session::BoundCall call;
    Session::Within("args", [&] { call = callback->bind(arguments, SeatOf(kind).connector); });
    call.run();
}

void LiveHost::Tell(const std::string& identifier, const std::string& xml)
{
    mRecorder.Services().panelEvents.DispatchApplicationEvent(identifier, xml);
}

}  // namespace Desk
