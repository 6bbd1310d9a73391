#include "protocol/reference/Events.h"

#include "protocol/reference/Markdown.h"
#include "protocol/reference/Values.h"

#include <algorithm>
#include <set>

namespace Protocol::Markdown {
namespace {

std::string Describe(const Model& model, const Action& action)
{
    if (action.kind == "reply")
        return "sends " + EventLink(model, action.name);
    if (action.kind == "post")
        return "posts " + Code(action.name) + " to " + Code(action.station);
    if (action.kind == "host")
        return "registers the assets with the project";
    return "calls " + Code(action.name);
}

std::string Does(const Model& model, const Handling& handling)
{
    std::vector<std::string> actions;
    for (const Action& action : handling.does) {
        std::string text = Describe(model, action);
        if (std::find(actions.begin(), actions.end(), text) == actions.end())
            actions.push_back(std::move(text));
    }
    return Join(actions, "nothing");
}

std::vector<std::string> Codes(const std::vector<std::string>& names)
{
    std::vector<std::string> codes;
    codes.reserve(names.size());
    for (const std::string& name : names)
        codes.push_back(Code(name));
    return codes;
}

std::vector<std::string> Links(const Model& model, const std::vector<std::string>& identifiers)
{
    std::vector<std::string> links;
    links.reserve(identifiers.size());
    for (const std::string& identifier : identifiers)
        links.push_back(EventLink(model, identifier));
    return links;
}

/// \return The connectors that send the notification, each once.
std::vector<std::string> SendersOf(const Event& event)
{
    std::vector<std::string> titles;
    for (const Sending& sending : event.sent) {
        const std::string title = ConnectorTitle(sending.connector);
        if (std::find(titles.begin(), titles.end(), title) == titles.end())
            titles.push_back(title);
    }
    return titles;
}

/// The same as Links, with the connector that sends it where it is not every one.
std::vector<std::string> LinksWithSenders(const Model& model, const std::vector<std::string>& identifiers)
{
    std::vector<std::string> links;
    for (const std::string& identifier : identifiers) {
        const std::vector<std::string> senders = SendersOf(*FindEvent(model, identifier));
        links.push_back(EventLink(model, identifier) + (senders.size() == model.connectors.size()
                                                            ? ""
                                                            : " (" + Join(senders) + " connector)"));
    }
    return links;
}

std::string Either(const std::vector<std::string>& items)
{
    return Join(items, "", " or ");
}

std::string DescribeAnswer(const Model& model, const Event& request, const Answer& answer)
{
    if (answer.sender == "nobody")
        return "nobody, by design";
    if (answer.sender == "host")
        return Either(Links(model, request.answers)) + ", not by this library";
    if (answer.sender == "other")
        return "not by this connector";
    const std::string sent = Either(Links(model, answer.notifications));
    if (answer.sender == "connector")
        return sent + ", at once";
    return sent + ", after the host's " + Either(Codes(answer.callbacks));
}

/// What a header's browser id is, for people.
std::string BrowserOf(const std::string& source)
{
    if (source == "current")
        return "the panel that the host names then";
    if (source == "request")
        return "that of the request";
    return source.empty() ? "" : Code(source);
}

std::string IdentifierOf(const std::string& source)
{
    if (source == "call")
        return "named by the host";
    if (source == "request")
        return "that of the request";
    if (source == "task")
        return "the same as `taskID`";
    return source == "fresh" ? "a fresh one" : source;
}

/// The places by what stands below the root: a section of which all is read by its name alone.
std::string Reads(const Model& model, const std::vector<std::string>& paths)
{
    std::vector<std::string> items;
    std::set<std::string> seen;
    for (const std::string& path : paths) {
        const std::string root = path.substr(0, path.find_first_of("/@"));
        if (!seen.insert(root).second)
            continue;
        std::vector<std::string> inside;
        bool isWhole = true;
        for (const Place& place : model.places) {
            if (place.path.substr(0, place.path.find_first_of("/@")) != root || !place.read ||
                !HoldsValue(place))
                continue;
            if (std::find(paths.begin(), paths.end(), place.path) == paths.end())
                isWhole = false;
            else
                inside.push_back(
                    Code(place.path.size() > root.size() ? place.path.substr(root.size() + 1) : root));
        }
        items.push_back(ElementLink(root) + (isWhole ? "" : " (" + Join(inside) + ')'));
    }
    return Join(items, "nothing");
}

/// The deepest of the places alone: they bring those around them.
std::string Needs(const std::vector<std::string>& paths)
{
    std::vector<std::string> deepest;
    for (const std::string& path : paths)
        if (std::none_of(paths.begin(), paths.end(), [&path](const std::string& other) {
                return other.size() > path.size() && other.compare(0, path.size(), path) == 0;
            }))
            deepest.push_back(path);
    return Join(Codes(deepest), "nothing");
}

/// A row with a cell for each connector; none where both are empty.
template <class Cell>
std::string ConnectorRow(const Event& request, const std::string& title, Cell cell)
{
    const std::string first = cell(request.handling[0]);
    const std::string second = cell(request.handling[1]);
    return first.empty() && second.empty() ? "" : Row({title, first, second});
}

std::string HandlingTable(const Model& model, const Event& request)
{
    std::string text = TableHead({"", ConnectorTitle(request.handling[0].connector) + " connector",
                                  ConnectorTitle(request.handling[1].connector) + " connector"});
    const auto add = [&](const std::string& title, auto cell) { text += ConnectorRow(request, title, cell); };
    add("does", [&](const Handling& handling) { return Does(model, handling); });
    add("reads",
        [&](const Handling& handling) { return handling.handled ? Reads(model, handling.reads) : ""; });
    add("needs", [](const Handling& handling) { return handling.handled ? Needs(handling.needs) : ""; });
    add("answered by",
        [&](const Handling& handling) { return DescribeAnswer(model, request, handling.answer); });
    add("matched by", [](const Handling& handling) { return Join(Codes(handling.answer.matchedBy)); });
    add("`browserID` of the answer",
        [](const Handling& handling) { return BrowserOf(handling.answer.browserID); });
    return text + '\n';
}

/// By whom, where connectors differ at which of them.
std::string AnsweredBy(const Model& model, const Event& request)
{
    std::vector<std::string> answers;
    std::vector<std::string> titled;
    for (const Handling& handling : request.handling) {
        const bool isSent = handling.answer.sender == "connector" || handling.answer.sender == "callback";
        if (!handling.handled && !(isSent && !IsHandled(request)))
            continue;
        answers.push_back(DescribeAnswer(model, request, handling.answer));
        titled.push_back(ConnectorTitle(handling.connector) + ": " + answers.back());
    }
    if (answers.empty())
        return DescribeAnswer(model, request, request.handling[0].answer);
    return answers.front() == answers.back() ? answers.front() : Join(titled, "", "; ");
}

std::string DescribeRequest(const Model& model, const Event& request)
{
    std::string text;
    const bool isHandled = IsHandled(request);
    if (isHandled || request.handling[0].answer.sender == "callback")
        text = HandlingTable(model, request);
    if (!isHandled)
        text += "No connector handles it.\n\n";
    if (!isHandled && !request.answers.empty())
        text += "By its name it is answered by " + Either(Links(model, request.answers)) + ".\n\n";
    if (!request.progress.empty())
        text += "On the way or afterwards: " + Join(LinksWithSenders(model, request.progress)) + ".\n\n";
    if (!request.ends.empty())
        text += "The work ends with " + Either(Links(model, request.ends)) + ".\n\n";
    if (!request.cancel.empty())
        text += "Ended by " + EventLink(model, request.cancel) + ".\n\n";
    return text;
}

std::string Cause(const Model& model, const Sending& sending)
{
    const std::string cause =
        sending.callback.empty() ? EventLink(model, sending.request) : "the host's " + Code(sending.callback);
    return cause + (sending.when.empty() ? "" : ", " + sending.when);
}

/// The requests that it answers or reports on.
std::string Follows(const Model& model, const Event& notification)
{
    std::vector<std::string> answered;
    std::vector<std::string> followed;
    for (const Event& request : model.events) {
        const auto holds = [&notification](const std::vector<std::string>& identifiers) {
            return std::find(identifiers.begin(), identifiers.end(), notification.identifier) !=
                   identifiers.end();
        };
        if (holds(request.answers))
            answered.push_back(EventLink(request));
        else if (holds(request.progress))
            followed.push_back(EventLink(request));
    }
    std::string text;
    if (!answered.empty())
        text += "Answers " + Join(answered) + ".\n\n";
    if (!followed.empty())
        text += "Follows " + Join(followed) + ".\n\n";
    return text;
}

std::string Carries(const Model& model, const Sending& sending)
{
    std::vector<std::string> items;
    std::set<std::string> seen;
    for (const std::string& path : sending.carries) {
        const Place* const place = FindPlace(model, path);
        const std::string root = path.substr(0, path.find_first_of("/@"));
        if (place->member.compare(0, 7, "header.") != 0 && root != "browserID" && root != "msgID" &&
            root != "taskID" && seen.insert(root).second)
            items.push_back(ElementLink(root));
    }
    return Join(items, "nothing but the header");
}

std::string DescribeNotification(const Model& model, const Event& notification)
{
    std::string text = Follows(model, notification);
    if (notification.sent.empty())
        return text + "This library never sends it.\n\n";
    text += TableHead({"sent by", "because of", "`taskID`", "`msgID`", "`browserID`", "holds", "text"});
    for (const Sending& sending : notification.sent)
        text += Row({ConnectorTitle(sending.connector) + " connector", Cause(model, sending),
                     IdentifierOf(sending.header.taskID), IdentifierOf(sending.header.msgID),
                     BrowserOf(sending.header.browserID), Carries(model, sending),
                     sending.decoded ? "[decoded](#decoded-notifications)" : "plain"});
    return text + '\n';
}

std::string Describe(const Model& model, const Event& event)
{
    const std::string name(ShortName(event.identifier));
    std::string text = "#### <a id=\"" + event.kind + '-' + name + "\"></a>" + Code(name) + "\n\n";
    text += "Identifier " + Code(event.identifier) + ", in C++ " + Code(event.constant) + ", since " +
            event.since + "\n\n";
    text += event.about + "\n\n";
    text += event.kind == "request" ? DescribeRequest(model, event) : DescribeNotification(model, event);
    return text + "```xml\n" + event.example + "```\n\n";
}

/// The causes of a notification, where connectors differ at which of them.
std::string CausesOf(const Model& model, const Event& event)
{
    std::vector<std::string> titled;
    std::vector<std::string> causes;
    for (const std::string& connector : model.connectors) {
        std::vector<std::string> own;
        for (const Sending& sending : event.sent)
            if (sending.connector == connector)
                own.push_back(sending.callback.empty() ? EventLink(model, sending.request)
                                                       : Code(sending.callback));
        if (own.empty())
            continue;
        causes.push_back(Join(own));
        titled.push_back(ConnectorTitle(connector) + ": " + causes.back());
    }
    return causes.empty() || causes.front() == causes.back() ? Join({causes.empty() ? "" : causes.front()})
                                                             : Join(titled, "", "; ");
}

}  // namespace

bool IsHandled(const Event& request)
{
    return std::any_of(request.handling.begin(), request.handling.end(),
                       [](const Handling& handling) { return handling.handled; });
}

std::string Overview(const Model& model)
{
    std::string text =
        TableHead({"Request", "", "Library connector", "Media collection connector", "Answered by"});
    for (const Event& event : model.events)
        if (event.kind == "request") {
            text += Row({EventLink(event), event.family, Does(model, event.handling[0]),
                         Does(model, event.handling[1]), AnsweredBy(model, event)});
        }
    text += '\n' + TableHead({"Notification", "", "Sent by", "Because of"});
    for (const Event& event : model.events)
        if (event.kind == "notification")
            text += Row({EventLink(event), event.family, Join(SendersOf(event), "not this library"),
                         CausesOf(model, event)});
    return text + '\n';
}

std::string Events(const Model& model, const std::string& kind)
{
    std::vector<std::string> families;
    for (const Event& event : model.events)
        if (std::find(families.begin(), families.end(), event.family) == families.end())
            families.push_back(event.family);
    std::string text;
    for (const std::string& family : families) {
        text += "### " + std::string(kind == "request" ? "Requests: " : "Notifications: ") + family + "\n\n";
        for (const Event& event : model.events)
            if (event.kind == kind && event.family == family)
                text += Describe(model, event);
    }
    return text;
}

std::string StationMessages(const Model& model)
{
    std::string text = TableHead({"Class", "Type name", "Station", "Payload", "Because of"});
    for (const StationMessage& message : model.stationMessages) {
        std::vector<std::string> causes = Codes(message.callbacks);
        for (const std::string& link : Links(model, message.requests))
            causes.push_back(link);
        text += Row({Code(message.name), Code(message.typeName), Code(message.station), Code(message.payload),
                     Join(causes)});
    }
    return text + '\n';
}

}  // namespace Protocol::Markdown
