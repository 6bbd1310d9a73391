#include "protocol/generator/Events.h"

#include "assetconnector/connectors/EventCatalogue.h"
#include "protocol/facts/CallbackFacts.h"
#include "protocol/facts/EventFacts.h"
#include "protocol/generator/Observer.h"
#include "protocol/generator/Places.h"
#include "protocol/generator/RequestTrials.h"
#include "protocol/generator/Trials.h"

#include <algorithm>
#include <stdexcept>

namespace Protocol::Generator {
namespace {

using ferrite::utility::UTF16to8;

std::string Identifier(const Model& model, const std::string& constant)
{
    for (const Event& event : model.events)
        if (event.constant == constant)
            return event.identifier;
    throw std::runtime_error("protocol/facts/EventFacts.cpp: there is no " + constant);
}

std::vector<std::string> Notifications(const Model& model, const char* names)
{
    std::vector<std::string> identifiers;
    for (const std::string& name : Words(names))
        identifiers.push_back(Identifier(model, "kPlexaEventType_Notification" + name));
    return identifiers;
}

void AddFacts(Model& model)
{
    for (std::size_t i = 0; i < kEventFacts.size(); ++i) {
        const AC::EventEntry& entry = AC::EventCatalogue()[i];
        Event event;
        event.constant = entry.constant;
        event.identifier = UTF16to8(*entry.identifier);
        event.kind = entry.kind == AC::EventKind::kRequest ? "request" : "notification";
        event.family = kEventFacts[i].family;
        event.since = kEventFacts[i].since;
        event.about = kEventFacts[i].about;
        model.events.push_back(std::move(event));
    }
    for (std::size_t i = 0; i < kEventFacts.size(); ++i) {
        model.events[i].answers = Notifications(model, kEventFacts[i].answers);
        model.events[i].progress = Notifications(model, kEventFacts[i].progress);
        model.events[i].ends = Notifications(model, kEventFacts[i].ends);
        for (const std::string& name : Words(kEventFacts[i].cancel))
            model.events[i].cancel = Identifier(model, "kPlexaEventType_" + name);
    }
}

/// \return When the callback is reported at all; empty: always.
std::string ConditionOf(const std::string& callback)
{
    for (const CallbackFact& fact : kCallbackFacts)
        if (fact.callback == callback)
            return fact.when;
    return "";
}

/// Finds out which callbacks do nothing with empty arguments, and says so of what they send.
void ObserveConditions(const ConnectorKind& kind, Model& model)
{
    RecordingHost host;
    const auto connector = kind.create(host.Dispatcher());
    for (const CallbackCall& callback : CallbackCalls()) {
        const std::string condition = ConditionOf(callback.name);
        callback.run(*connector.Get(), 0);
        const bool isReported = !host.TakeEffects().empty();
        callback.runEmpty(*connector.Get());
        const bool isReportedEmpty = !host.TakeEffects().empty();
        if (isReported && isReportedEmpty == !condition.empty())
            throw std::runtime_error(std::string("protocol/facts/CallbackFacts.h: ") + callback.name +
                                     (isReportedEmpty ? " is reported" : " is not reported") +
                                     " with empty arguments");
        for (Event& event : model.events)
            for (Sending& sending : event.sent)
                if (sending.connector == kind.name && sending.callback == callback.name && !condition.empty())
                    sending.when = sending.when.empty() ? condition : condition + ", and " + sending.when;
    }
}

/// Everything that the host can report, before and after requests on which it depends what is sent.
void ObserveCallbacks(const ConnectorKind& kind, Model& model, Observer& observer)
{
    const Sources sources{{JsonOf(kCallTask), "call"},
                          {JsonOf(kCallMessage), "call"},
                          {JsonOf(FixedTexts::kFresh), "fresh"},
                          {RecordingHost::kBrowserID, "current"}};
    struct Before
    {
        const UTF16String* request;
        const char* when;
    };
    const Before befores[] = {
        {&AC::kPlexaEventType_ImportXMP,
         "unless of `ImportXMP` and `ReadXMPFromDisk` this connector last carried out the latter"},
        {&AC::kPlexaEventType_ReadXMPFromDisk,
         "when of `ImportXMP` and `ReadXMPFromDisk` this connector last carried out the latter"}};
    for (const Before& before : befores) {
        RecordingHost host;
        const auto connector = kind.create(host.Dispatcher());
        host.Raise(*before.request, RequestOfAll(model.places).Text());
        for (const CallbackCall& callback : CallbackCalls())
            for (const Ridge::ResultCode code : {0, Ridge::kFailure}) {
                callback.run(*connector.Get(), code);
                for (const Effect& effect : host.TakeEffects()) {
                    Sending sending;
                    sending.connector = kind.name;
                    sending.callback = callback.name;
                    sending.when = before.when;
                    observer.AddEffect(effect, sending, sources);
                }
            }
    }
}

void ObserveRequests(const ConnectorKind& kind, Model& model, Observer& observer)
{
    Sources sources;
    for (const Place& place : model.places)
        if (place.path == "taskID@ID" || place.path == "msgID@ID" || place.path == "browserID@ID")
            sources[place.sample] = "request";
    RequestTrials trials(kind, model.places);
    for (Event& event : model.events) {
        if (event.kind != "request")
            continue;
        Handling handling = trials.Try(event.identifier);
        handling.handled = kind.handles(ferrite::utility::UTF8to16(event.identifier));
        if (handling.handled == handling.does.empty())
            throw std::runtime_error(event.identifier + " was seen to do nothing at " + kind.name);
        event.handling.push_back(std::move(handling));
        for (const Effect& effect : trials.Seen()) {
            Sending sending;
            sending.connector = kind.name;
            sending.request = event.identifier;
            observer.AddEffect(effect, sending, sources);
        }
    }
}

/// \param after Of the callbacks that send one of the answers only this one answers; empty: each does.
Answer AnswerOf(const Model& model, const Event& request, const std::string& connector,
                const std::string& after)
{
    Answer answer;
    answer.sender = request.answers.empty() ? "nobody" : "host";
    if (std::none_of(request.handling.begin(), request.handling.end(),
                     [](const Handling& handling) { return handling.handled; }))
        return answer;  // what answers by its name has other causes
    for (const std::string& identifier : request.answers)
        if (!FindEvent(model, identifier)->sent.empty())
            answer.sender = "other";
    for (const bool atOnce : {true, false})
        for (const std::string& identifier : request.answers)
            for (const Sending& sending : FindEvent(model, identifier)->sent) {
                const bool fits =
                    atOnce ? sending.request == request.identifier
                           : !sending.callback.empty() && (after.empty() || sending.callback == after);
                if (sending.connector != connector || !fits || (!atOnce && answer.sender == "connector"))
                    continue;
                answer.sender = atOnce ? "connector" : "callback";
                AddUnique(answer.notifications, identifier);
                if (!atOnce)
                    AddUnique(answer.callbacks, sending.callback);
                answer.matchedBy.clear();
                if (sending.header.msgID == "call" || sending.header.msgID == "request")
                    answer.matchedBy.emplace_back("msgID");
                if (sending.header.taskID == "call" || sending.header.taskID == "request")
                    answer.matchedBy.emplace_back("taskID");
                answer.browserID = sending.header.browserID;
            }
    return answer;
}

/// What is up to the host: the header alone.
std::string HeaderAlone(const Model& model)
{
    Node root;
    root.name = model.notificationRoot;
    for (const char* const path : {"browserID@ID", "msgID@ID", "taskID@ID"})
        Put(root, path, FindPlace(model, path)->sample);
    return root.Text();
}

}  // namespace

void AddEvents(Model& model)
{
    AddFacts(model);
    Observer observer(model);
    for (const ConnectorKind& kind : ConnectorKinds()) {
        model.connectors.emplace_back(kind.name);
        ObserveRequests(kind, model, observer);
        ObserveCallbacks(kind, model, observer);
        ObserveConditions(kind, model);
        for (const Event& event : model.events)
            if (event.kind == "notification" &&
                kind.handles(ferrite::utility::UTF8to16(event.identifier)) !=
                    std::any_of(event.sent.begin(), event.sent.end(),
                                [&kind](const Sending& sending) { return sending.connector == kind.name; }))
                throw std::runtime_error(event.identifier + " was never seen from " + kind.name);
    }
    for (std::size_t i = 0; i < model.events.size(); ++i) {
        Event& event = model.events[i];
        for (Handling& handling : event.handling)
            handling.answer = AnswerOf(model, event, handling.connector, kEventFacts[i].after);
        if (event.kind == "request")
            event.example = ExampleOf(model.places, event.handling).Text();
        else if (event.example.empty())
            event.example = HeaderAlone(model);
    }
}

}  // namespace Protocol::Generator
