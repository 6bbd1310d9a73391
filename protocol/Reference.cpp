#include "protocol/Reference.h"

#include "protocol/reference/Events.h"
#include "protocol/reference/Markdown.h"
#include "protocol/reference/Prose.h"
#include "protocol/reference/Values.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace Protocol {
namespace {

using namespace Markdown;

bool IsRequest(const Event& event)
{
    return event.kind == "request";
}

bool Handles(const Event& event, std::size_t connector)
{
    return IsRequest(event) && event.handling[connector].handled;
}

bool IsNeverSent(const Event& event)
{
    return !IsRequest(event) && event.sent.empty();
}

bool IsStatus(const Event& event)
{
    const std::string_view status = "Status";
    const std::string_view name = event.identifier;
    return name.size() > status.size() && name.substr(name.size() - status.size()) == status;
}

/// Whether a connector handles the request and the library never sends its answer.
bool IsLeftToHost(const Event& event)
{
    return std::any_of(event.handling.begin(), event.handling.end(), [](const Handling& handling) {
        return handling.handled && handling.answer.sender == "host";
    });
}

/// Whether the library connector names the media collection in the notification.
bool IsToOther(const Event& event)
{
    return std::any_of(event.sent.begin(), event.sent.end(), [](const Sending& sending) {
        return sending.connector == "library" && sending.header.browserID == "MediaCollection";
    });
}

bool IsRepeated(const Event& event)
{
    return std::any_of(event.sent.begin(), event.sent.end(),
                       [](const Sending& sending) { return sending.header.browserID == "request"; });
}

bool IsDecoded(const Event& event)
{
    return std::any_of(event.sent.begin(), event.sent.end(),
                       [](const Sending& sending) { return sending.decoded; });
}

/// What stands in place of each name between braces.
std::map<std::string, std::string> Pieces(const Model& model)
{
    const auto count = [&model](auto fits) {
        return std::to_string(std::count_if(model.events.begin(), model.events.end(), fits));
    };
    const auto links = [&model](auto fits) {
        std::vector<std::string> items;
        for (const Event& event : model.events)
            if (fits(event))
                items.push_back(EventLink(event));
        return Join(items);
    };
    const auto handledBy = [&count](bool library, bool mediaCollection) {
        return count([=](const Event& event) {
            return IsRequest(event) && Handles(event, 0) == library && Handles(event, 1) == mediaCollection;
        });
    };
    return {
        {"version", model.version},
        {"requestRoot", model.requestRoot},
        {"notificationRoot", model.notificationRoot},
        {"requests", count(IsRequest)},
        {"notifications", count([](const Event& event) { return !IsRequest(event); })},
        {"handled", count(IsHandled)},
        {"handledByBoth", handledBy(true, true)},
        {"handledByLibrary", handledBy(true, false)},
        {"handledByMediaCollection", handledBy(false, true)},
        {"unhandled", handledBy(false, false)},
        {"leftToHost", count(IsLeftToHost)},
        {"linksLeftToHost", links(IsLeftToHost)},
        {"linksUnanswered",
         links([](const Event& event) { return IsHandled(event) && event.answers.empty(); })},
        {"neverSent", count(IsNeverSent)},
        {"neverSentStatus", count([](const Event& event) { return IsNeverSent(event) && IsStatus(event); })},
        {"linksDecoded", links(IsDecoded)},
        {"linksToOther", links(IsToOther)},
        {"linksRepeated", links(IsRepeated)},
        {"glance", Overview(model)},
        {"requestList", Events(model, "request")},
        {"notificationList", Events(model, "notification")},
        {"stationMessages", StationMessages(model)},
        {"elements", ElementTables(model)},
        {"forms", FormTable(model)},
    };
}

}  // namespace

std::string Reference(const Model& model)
{
    const std::map<std::string, std::string> pieces = Pieces(model);
    std::string_view rest = kProse;
    std::string text;
    while (true) {
        const std::size_t open = rest.find("{{");
        text.append(rest.substr(0, open));
        if (open == std::string_view::npos)
            break;
        const std::size_t close = rest.find("}}", open);
        text += pieces.at(std::string(rest.substr(open + 2, close - open - 2)));
        rest.remove_prefix(close + 2);
    }
    text.pop_back();  // the empty line behind the last table
    return text;
}

}  // namespace Protocol
