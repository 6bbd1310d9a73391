#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/plexa/PlexaManager.h"
#include "conformance/CheckTables.h"
#include "conformance/PanelProbes.h"
#include "conformance/Probes.h"

#include <atomic>
#include <optional>

namespace Conformance {
namespace {

using ferrite::utility::UTF16to8;
using ferrite::utility::UTF8to16;

void Registered(Context& context)
{
    Panel panel(context);
    const UTF16String type = UniqueType();
    const Registration registration(type);
    const UTF16String data = u"<browserMessage a=\"&lt;&#xD;\">\u00E4 \u20AC \U0001F600\r\n</browserMessage>";
    panel.Raise(type, data);
    panel.ExpectRaised(context, "data of a registered event", UTF16to8(data), {UTF16to8(data)});
}

void Unregistered(Context& context)
{
    Panel panel(context);
    const UTF16String type = UniqueType();
    const Registration registration(type);
    panel.Raise(UniqueType(), u"not registered");
    panel.Raise(type, u"last");
    panel.ExpectRaised(context, "delivered of two events, the second one registered", "last", {"last"});
}

void Removed(Context& context)
{
    Panel panel(context);
    const UTF16String type = UniqueType();
    const UTF16String other = UniqueType();
    const Registration registration(type);
    PlexaManager::AddTandemEventListener(other, nullptr);
    PlexaManager::RemoveTandemEventListener(other, nullptr);
    context.ExpectNoThrow("removing a type that is not registered",
                          [&other] { PlexaManager::RemoveTandemEventListener(other, nullptr); });
    panel.Raise(other, u"removed");
    panel.Raise(type, u"last");
    panel.ExpectRaised(context, "delivered of two events, the first one removed", "last", {"last"});
}

void Twice(Context& context)
{
    Panel panel(context);
    const UTF16String type = UniqueType();
    const UTF16String other = UniqueType();
    const Registration first(type);
    const Registration second(type);
    const Registration last(other);
    panel.Raise(type, u"once");
    panel.Raise(other, u"last");
    panel.ExpectRaised(context, "delivered of an event that is registered twice, and another one", "last",
                       {"once", "last"});
}

void Order(Context& context)
{
    constexpr int kEvents = 20;
    Panel panel(context);
    const UTF16String one = UniqueType();
    const UTF16String other = UniqueType();
    const Registration first(one);
    const Registration second(other);
    Log::Texts raised;
    for (int i = 0; i < kEvents; ++i) {
        raised.push_back(std::to_string(i));
        panel.Raise(i % 3 == 0 ? one : other, UTF8to16(raised.back()));
    }
    panel.ExpectRaised(context, "delivered of events of two types", raised.back(), raised);
}

void Dispatched(Context& context)
{
    const Notifications notifications(context);
    const std::string data = "<a b=\"&lt;\">\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80</a>";
    const std::string type = UTF16to8(AC::kPlexaEventType_NotificationStartIngest);
    PlexaManager::DispatchApplicationEvent(type, data);
    notifications.ExpectAll(context, "a notification at the panel", {type + ' ' + data});
}

void Large(Context& context)
{
    constexpr std::size_t kSize = 4U << 20U;
    const Notifications notifications(context);
    std::string data = "<a>";
    while (data.size() < kSize)
        data += std::to_string(data.size()) + ' ';
    data += "</a>";
    const std::string type = UTF16to8(AC::kPlexaEventType_NotificationStartIngest);
    PlexaManager::DispatchApplicationEvent(type, data);
    context.WaitUntil([&notifications] { return !notifications.GetLog().Entries().empty(); });
    const Log::Texts entries = notifications.GetLog().Entries();
    const bool whole = entries == Log::Texts{type + ' ' + data};
    context.Expect(
        whole, "a notification of " + std::to_string(data.size()) + " bytes", "the whole text",
        entries.empty() ? "nothing" : std::to_string(entries.front().size()) + " bytes, with the type");
}

void BrowserID(Context& context)
{
    const std::string id = PlexaManager::GetBrowserID();
    context.Expect(UTF16to8(UTF8to16(id)) == id, "the id of the current panel", "UTF-8", Describe(id));
}

void Threads(Context& context)
{
    constexpr int kRounds = 50;
    const Subject& subject = context.GetSubject();
    const UTF16String types[] = {UniqueType(), UniqueType()};
    const Finally removing([&types] {
        for (const UTF16String& type : types)
            PlexaManager::RemoveTandemEventListener(type, nullptr);
    });
    std::optional<Notifications> notifications;
    if (subject.setPanel)
        notifications.emplace(context);
    const std::string sent = UTF16to8(AC::kPlexaEventType_NotificationStartIngest);
    std::atomic<std::size_t> threads{0};
    const bool done = context.ExpectNoThrow("panel events on other threads", [&] {
        OnTwoThreads([&] {
            const std::size_t mine = threads++;
            const std::string data = "<a>" + std::to_string(mine) + "</a>";
            for (int i = 0; i < kRounds; ++i) {
                const Registration registration(types[mine]);
                PlexaManager::GetBrowserID();
                PlexaManager::DispatchApplicationEvent(sent, data);
            }
            PlexaManager::AddTandemEventListener(types[mine], nullptr);
        });
    });
    if (done && notifications) {
        Log::Texts expected(kRounds, sent + " <a>0</a>");
        expected.resize(expected.size() * 2, sent + " <a>1</a>");
        const Log& log = notifications->GetLog();
        context.WaitUntil([&] { return log.Entries().size() >= expected.size(); });
        context.ExpectEqual("notifications of two threads, sorted", expected, Sorted(log.Entries()));
    }
    if (done && subject.raisePanelEvent) {
        const Panel panel(context);
        panel.Raise(types[0], u"0");
        panel.Raise(types[1], u"1");
        context.WaitUntil([&panel] { return panel.GetLog().Entries().size() >= 2; });
        context.ExpectEqual("events of types that two threads registered, sorted", Log::Texts{"0", "1"},
                            Sorted(panel.GetLog().Entries()));
    }
}

}  // namespace

std::vector<Check> PanelEventChecks()
{
    return {
        {"panels.registered",
         "A panel event of a registered type reaches the panel services station with its type and data.",
         "Requests are not heard, or names in them are wrong.",
         Registered,
         {"stations.end-waits"}},
        {"panels.unregistered",
         "A panel event of a type that is not registered reaches nobody.",
         "Panels make the host act on what it never asked for.",
         Unregistered,
         {"stations.end-waits"}},
        {"panels.removed",
         "After a type is removed its events reach nobody; removing it again does nothing.",
         "Requests arrive when nothing is left to answer them.",
         Removed,
         {"stations.end-waits"}},
        {"panels.twice",
         "An event of a type that is registered twice is delivered once.",
         "Every request is carried out twice once two components asked for the registration.",
         Twice,
         {"stations.end-waits"}},
        {"panels.order",
         "Panel events are delivered in the order in which they were raised.",
         "A cancellation overtakes what it cancels.",
         Order,
         {"stations.end-waits"}},
        {"panels.dispatched", "A notification reaches the panel with its type and data.",
         "Panels wait for ever, or show wrong characters.", Dispatched},
        {"panels.large", "A notification may be some megabytes long.",
         "Panels stay empty as soon as a library is large.", Large},
        {"panels.browser-id", "The id of the current panel is UTF-8.",
         "The panel does not know that it is meant: its own id comes back as another text.", BrowserID},
        {"panels.threads",
         "Types are registered and notifications sent on any thread, several at once.",
         "Reports of background threads do not reach the panel.",
         Threads,
         {"stations.end-waits"}},
    };
}

}  // namespace Conformance
