#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "conformance/CheckTables.h"
#include "conformance/PanelProbes.h"
#include "conformance/ProbeDispatcher.h"

#include <algorithm>
#include <utility>

namespace Conformance {
namespace {

using Connector = Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>;
using ferrite::utility::Guid;
using ferrite::utility::UTF16to8;
using ferrite::utility::UTF8to16;

constexpr Guid kTask{0x1000000000004000, 0x8000000000000001};

/// \return The text of a request to open the ingest dialog.
UTF16String DialogFor(const std::string& targetBin)
{
    return UTF8to16("<browserMessage><targetBin ID=\"" + targetBin + "\"/></browserMessage>");
}

/// Raises a request to open the ingest dialog.
void RaiseDialog(const Panel& panel, const std::string& targetBin)
{
    panel.Raise(AC::kPlexaEventType_OpenIngestDlg, DialogFor(targetBin));
}

/// Raises every request of the catalogue, then an event that is registered, and waits for that.
/// \return What was delivered, sorted.
Log::Texts RaiseAll(Context& context, const Panel& panel, const std::string& last)
{
    const UTF16String type = UniqueType();
    const Registration registration(type);
    for (const AC::EventEntry& event : AC::EventCatalogue())
        if (event.kind == AC::EventKind::kRequest)
            panel.Raise(*event.identifier, *event.identifier);
    panel.Raise(type, UTF8to16(last));
    context.WaitUntil([&panel, &last] { return panel.GetLog().Has(last); });
    return Sorted(panel.GetLog().Entries());
}

void Requests(Context& context)
{
    Log::Texts expected{"last"};
    for (const AC::EventEntry& event : AC::EventCatalogue())
        if (event.kind == AC::EventKind::kRequest)
            expected.push_back(UTF16to8(*event.identifier));
    std::sort(expected.begin(), expected.end());

    const Finally removing([] { AC::RemoveTandemEvents(); });
    AC::AddTandemEvents();
    {
        const Panel panel(context);
        context.ExpectEqual("delivered of all requests, registered, and of one event more", expected,
                            RaiseAll(context, panel, "last"));
    }
    AC::RemoveTandemEvents();
    const Panel panel(context);
    context.ExpectEqual("delivered of all requests, removed, and of one event more", Log::Texts{"end"},
                        RaiseAll(context, panel, "end"));
}

void RegisteredInside(Context& context)
{
    const auto station = Ridge::GetPlexaStationID();
    const Connector connector = AC::CreateIngestGlintLibraryConnector(nullptr);
    const Panel panel(context);
    const Finally removing([] { AC::RemoveTandemEvents(); });
    Kiln::StationUtils::BroadcastMessage(station, Ridge::AddTandemListenerEvent());
    panel.Raise(AC::kPlexaEventType_CreateRoughCut, u"last");
    context.WaitUntil([&panel] { return panel.GetLog().Has("last"); });
    context.ExpectEqual("a request that a connector registered in answer to a message is delivered", true,
                        panel.GetLog().Has("last"));
}

void InsideDispatch(Context& context)
{
    const Connector connector = AC::CreateIngestGlintLibraryConnector(nullptr);
    std::atomic<bool> answered{false};
    const Notifications notifications(context, [&](const std::string& /*type*/) {
        if (!answered.exchange(true))
            connector->OnIngestFinished(kTask);
    });
    connector->OnIngestStarted(kTask);
    context.ExpectEqual("a notification arrives that is sent while the panel takes another one", true,
                        notifications.WaitFor(context, AC::kPlexaEventType_NotificationFinishIngest));
}

void InsideDispatcher(Context& context)
{
    const Panel panel(context);
    const Notifications notifications(context);
    const Registration registration(AC::kPlexaEventType_OpenIngestDlg);
    Log log;
    Connector connector;
    ProbeDispatcher dispatcher([&](const UTF16String& targetBin) {
        log.Add(UTF16to8(targetBin));
        if (targetBin != u"outer")
            return;
        RaiseDialog(panel, "inner");
        connector->OnIngestStarted(kTask);
    });
    const Finally clearing([&connector] { connector.Clear(); });  // before the dispatcher goes
    connector = AC::CreateIngestGlintLibraryConnector(&dispatcher);
    RaiseDialog(panel, "outer");
    ExpectLog(context, "requests of a panel, the second one raised by the dispatcher of the first one", log,
              "inner", {"outer", "inner"});
    context.ExpectEqual("a callback from inside the dispatcher is told", true,
                        notifications.WaitFor(context, AC::kPlexaEventType_NotificationStartIngest));
}

void InsideDelivery(Context& context)
{
    Context::Require(context.GetSubject().waitForUserInterface, "waitForUserInterface");
    const Panel panel(context);
    const UTF16String type = UniqueType();
    const Registration registration(type);
    const Connector connector = AC::CreateIngestMediaCollectionConnector(nullptr);
    Log log;
    std::atomic<bool> answered{false};
    const Receiver component(AC::GetMCAssetConnectorStation(), [&](const std::string& /*text*/) {
        if (!answered.exchange(true)) {
            connector->OnIngestFinished(kTask);
            panel.Raise(type, u"raised");
        }
        log.Add("told");
    });
    connector->OnIngestStarted(kTask);
    context.WaitUntil([&] { return log.Entries().size() == 2 && panel.GetLog().Has("raised"); });
    context.ExpectEqual("messages to a component that answers the first one with a callback",
                        Log::Texts{"told", "told"}, log.Entries());
    context.ExpectEqual("a panel event that is raised by a component is delivered", true,
                        panel.GetLog().Has("raised"));
}

void PanelThrows(Context& context)
{
    const Connector connector = AC::CreateIngestGlintLibraryConnector(nullptr);
    std::atomic<bool> thrown{false};
    const Notifications notifications(context, [&thrown](const std::string& /*type*/) {
        if (!thrown.exchange(true))
            throw Thrown();
    });
    try {
        connector->OnIngestStarted(kTask);
    } catch (...) {  // a host may hand on another exception, or none
    }
    connector->OnIngestFinished(kTask);
    context.ExpectEqual("a notification arrives when a panel threw at the one before", true,
                        notifications.WaitFor(context, AC::kPlexaEventType_NotificationFinishIngest));
}

void DispatcherThrows(Context& context)
{
    const Panel panel(context);
    const Registration registration(AC::kPlexaEventType_OpenIngestDlg);
    Log log;
    ProbeDispatcher dispatcher([&log](const UTF16String& targetBin) {
        log.Add(UTF16to8(targetBin));
        if (targetBin == u"bad")
            throw Thrown();
    });
    const Connector connector = AC::CreateIngestGlintLibraryConnector(&dispatcher);
    RaiseDialog(panel, "bad");
    RaiseDialog(panel, "good");
    ExpectLog(context, "requests of a panel, the first of which makes the dispatcher throw", log, "good",
              {"bad", "good"});
}

void DroppedInside(Context& context)
{
    const auto& raise = context.GetSubject().raisePanelEvent;
    Context::Require(raise, "raisePanelEvent");
    const Registration registration(AC::kPlexaEventType_OpenIngestDlg);
    Log log;
    Connector connector;
    ProbeDispatcher dispatcher([&](const UTF16String& targetBin) {
        connector.Clear();
        log.Add(UTF16to8(targetBin));
    });
    const Finally clearing([&connector] { connector.Clear(); });  // before the dispatcher goes
    // No other listener at the station: the connector is its last.
    for (const std::string bin : {"first", "second"}) {
        connector = AC::CreateIngestGlintLibraryConnector(&dispatcher);
        raise(AC::kPlexaEventType_OpenIngestDlg, DialogFor(bin));
        context.WaitUntil([&log, &bin] { return log.Has(bin); });
    }
    const Panel panel(context);
    RaiseDialog(panel, "last");  // behind the deliveries under way, which use the dispatcher
    context.WaitUntil([&panel] { return !panel.GetLog().Entries().empty(); });
    context.ExpectEqual("requests to two connectors, each dropped by its dispatcher",
                        Log::Texts{"first", "second"}, log.Entries());
}

}  // namespace

std::vector<Check> ConnectorChecks()
{
    return {
        {"connectors.requests",
         "Every request of the catalogue can be registered at once, and removed again.",
         "Some requests of panels are never heard.",
         Requests,
         {"stations.end-waits"}},
        {"connectors.registered-inside",
         "Types may be registered from inside the delivery of a message.",
         "A component asks for the registration, and no request is heard.",
         RegisteredInside,
         {"stations.end-waits"}},
        {"connectors.inside-dispatch",
         "A notification may be sent while a panel takes another one.",
         "A panel that answers at once misses what comes of it, or the host stands still.",
         InsideDispatch,
         {"stations.end-waits"}},
        {"connectors.inside-dispatcher",
         "A dispatcher may raise panel events and call connectors back.",
         "What a dispatcher does at once is lost, or the host stands still.",
         InsideDispatcher,
         {"stations.end-waits"}},
        {"connectors.inside-delivery",
         "A component may call connectors and raise panel events when it is told.",
         "What a component does at once is lost, or the host stands still.",
         InsideDelivery,
         {"stations.end-waits", "memory.threads"}},
        {"connectors.panel-throws",
         "Panels get notifications when one has thrown.",
         "One failure of a page, and panels get nothing any more.",
         PanelThrows,
         {"stations.end-waits"}},
        {"connectors.dispatcher-throws",
         "Requests are heard when the dispatcher of one has thrown.",
         "One failed request, and no panel is heard any more.",
         DispatcherThrows,
         {"stations.end-waits", "stations.after-exception"}},
        {"connectors.dropped-inside",
         "The last connector may be dropped while it handles a request; the next one is heard.",
         "The panel is dead after it was closed by its own request.",
         DroppedInside,
         {"stations.end-waits", "stations.end-itself"}},
    };
}

}  // namespace Conformance
