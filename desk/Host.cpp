#include "desk/Host.h"

#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>
#include <utility>

namespace Desk {
namespace {

using AC::IngestGlintLibraryConnector;
using AC::IngestMediaCollectionConnector;

bool IsHandledByBoth(const UTF16String& type)
{
    return IngestGlintLibraryConnector::Handles(type) && IngestMediaCollectionConnector::Handles(type);
}

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

Host::BrowserIDScope::BrowserIDScope(ReferenceHost::PanelEvents& events, std::string browserID)
    : mEvents(events), mBefore(events.GetBrowserID())
{
    mEvents.SetBrowserID(std::move(browserID));
}

Host::BrowserIDScope::~BrowserIDScope()
{
    mEvents.SetBrowserID(std::move(mBefore));
}

Host::Host(Work& work) : mWork(work), mHandles(work.Handles())
{
    mServices.GetPanelEvents().SetBrowserID({});
    AC::AddTandemEvents();
    mSeats[IndexOf(PanelKind::kLibrary)].connector = AC::CreateIngestGlintLibraryConnector(nullptr);
    mSeats[IndexOf(PanelKind::kMediaCollection)].connector =
        AC::CreateIngestMediaCollectionConnector(nullptr);
    for (Seat& seat : mSeats)
        seat.access = AC::Query<AC::IAssetConnectorPrivate>(seat.connector);
    mWork.Begin(*this);
}

void Host::Attach(boost::shared_ptr<ReferenceHost::Panel> panel)
{
    mServices.GetPanelEvents().Attach(std::move(panel));
}

void Host::Raise(const Origin& asker, const std::string& type, const std::string& xml)
{
    const UTF16String identifier = ferrite::utility::UTF8to16(type);
    const bool isHandledByBoth = IsHandledByBoth(identifier);
    for (const PanelKind kind : kPanelKinds) {
        ALD::IAssetLibraryDispatcher* const dispatcher =
            isHandledByBoth && kind != asker.kind ? &mIdle : &mWork.DispatcherOf(kind);
        mSeats[IndexOf(kind)].access->SetDispatcher(dispatcher);
    }
    const AskerScope scope(mAsker, asker);
    mServices.GetPanelEvents().Raise(identifier, ferrite::utility::UTF8to16(xml));
    if (std::find(mHandles.begin(), mHandles.end(), type) != mHandles.end())
        mWork.Handle(asker, type, xml);
}

}  // namespace Desk
