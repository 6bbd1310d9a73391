#include "protocol/Comparison.h"

#include <algorithm>

namespace Protocol {
namespace {

using Texts = std::vector<std::string>;

bool Holds(const Texts& texts, const std::string& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::string Quoted(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// The changes of one event or place.
class Changes
{
public:
    Changes(std::string subject, std::vector<Change>& changes)
        : mSubject(std::move(subject)), mChanges(changes)
    {
    }

    void Break(std::string what) { mChanges.push_back({true, mSubject, std::move(what)}); }
    void Add(std::string what) { mChanges.push_back({false, mSubject, std::move(what)}); }

    /// What there was and is not any more, and the reverse.
    /// \param isGain More of it is good for panels, less a break; else the reverse.
    void CompareSets(const Texts& before, const Texts& now, const std::string& verb, bool isGain = true)
    {
        for (const std::string& text : before)
            if (!Holds(now, text))
                Report(!isGain, verb, " no longer: ", text);
        for (const std::string& text : now)
            if (!Holds(before, text))
                Report(isGain, verb, " now: ", text);
    }

    /// A value whose every change is a break.
    void CompareValues(const std::string& before, const std::string& now, const std::string& what)
    {
        if (before != now)
            Break(what + " was \"" + before + "\", is \"" + now + '"');
    }

    /// What was so and is not any more, or the reverse.
    void CompareFlags(bool before, bool now, const std::string& what)
    {
        if (before && !now)
            Break("is no longer " + what);
        if (!before && now)
            Add("is now " + what);
    }

private:
    void Report(bool isAddition, std::string what, const char* how, const std::string& text)
    {
        mChanges.push_back({!isAddition, mSubject, what.append(how).append(text)});
    }

    std::string mSubject;
    std::vector<Change>& mChanges;
};

/// \return The row with the same key, or null.
template <class Part, class Value>
const Part* Same(const std::vector<Part>& parts, const Part& part, Value Part::*key)
{
    for (const Part& other : parts)
        if (other.*key == part.*key)
            return &other;
    return nullptr;
}

void CompareHandling(const Handling& before, const Handling& now, Changes& changes)
{
    const std::string connector = "the " + before.connector + " connector ";
    if (before.handled && !now.handled)
        return changes.Break(connector + "does not handle it any more");
    if (!before.handled && now.handled)
        changes.Add(connector + "handles it now");
    const auto names = [](const Handling& handling) {
        Texts texts;
        for (const Action& action : handling.does)
            texts.push_back(action.kind + ' ' + action.name);
        return texts;
    };
    changes.CompareSets(names(before), names(now), connector + "does");
    changes.CompareSets(before.reads, now.reads, connector + "reads");
    if (before.handled)
        changes.CompareSets(before.needs, now.needs, connector + "needs", false);
}

void CompareAnswers(const Handling& before, const Handling& now, Changes& changes)
{
    if (!before.handled || !now.handled)
        return;
    const std::string answer = "the answer at the " + before.connector + " connector ";
    changes.CompareValues(before.answer.sender, now.answer.sender, answer + "is sent by: it");
    changes.CompareSets(before.answer.notifications, now.answer.notifications, answer + "is");
    changes.CompareSets(before.answer.matchedBy, now.answer.matchedBy, answer + "is matched by");
    changes.CompareValues(before.answer.browserID, now.answer.browserID, answer + "has a browserID that");
}

/// What brings a connector to send a notification.
std::string CauseOf(const Sending& sending)
{
    const std::string cause = sending.callback.empty() ? sending.request : sending.callback;
    return "the " + sending.connector + " connector, because of " + cause +
           (sending.when.empty() ? "" : ", ") + sending.when;
}

void CompareSending(const Sending& before, const Sending& now, Changes& changes)
{
    const std::string cause = CauseOf(now) + ": ";
    changes.CompareSets(before.carries, now.carries, cause + "holds");
    changes.CompareValues(before.decoded ? "decoded" : "plain", now.decoded ? "decoded" : "plain",
                          cause + "the text");
    changes.CompareValues(before.header.taskID, now.header.taskID, cause + "the taskID");
    changes.CompareValues(before.header.msgID, now.header.msgID, cause + "the msgID");
    changes.CompareValues(before.header.browserID, now.header.browserID, cause + "the browserID");
}

void CompareSendings(const Event& before, const Event& now, Changes& changes)
{
    const auto causes = [](const Event& event) {
        Texts texts;
        for (const Sending& sending : event.sent)
            texts.push_back(CauseOf(sending));
        return texts;
    };
    changes.CompareSets(causes(before), causes(now), "is sent by");
    for (const Sending& sending : before.sent)
        for (const Sending& other : now.sent)
            if (CauseOf(sending) == CauseOf(other))
                CompareSending(sending, other, changes);
}

void CompareEvents(const Event& before, const Event& now, Changes& changes)
{
    changes.CompareValues(before.kind, now.kind, "the kind");
    changes.CompareSets(before.answers, now.answers, "is answered by");
    changes.CompareSets(before.progress, now.progress, "is followed by");
    changes.CompareSets(before.ends, now.ends, "ends with");
    if (before.cancel.empty() && !now.cancel.empty())
        changes.Add("can be ended by " + now.cancel);
    else
        changes.CompareValues(before.cancel, now.cancel, "the request that ends it");
    for (const Handling& handling : before.handling)
        if (const Handling* const other = Same(now.handling, handling, &Handling::connector)) {
            CompareHandling(handling, *other, changes);
            CompareAnswers(handling, *other, changes);
        }
    CompareSendings(before, now, changes);
}

void ComparePlaces(const Place& before, const Place& now, Changes& changes)
{
    changes.CompareFlags(before.read, now.read, "read in requests");
    changes.CompareFlags(before.written, now.written, "written in notifications");
    changes.CompareFlags(before.many, now.many, "allowed many times");
    changes.CompareValues(before.form, now.form, "the form of its value");
    changes.CompareValues(before.member, now.member, "the member of the record");
    changes.CompareValues(std::to_string(before.most), std::to_string(now.most),
                          "how often a notification holds it");
    changes.CompareSets(before.needs, now.needs, "needs", false);
    changes.CompareValues(before.countsAt, now.countsAt, "the rate that it counts at");
    changes.CompareSets(before.hiddenBy, now.hiddenBy, "is hidden by", false);
    if (before.read && now.read)
        for (const auto& [field, what] :
             {std::pair(&Place::missing, "missing"), std::pair(&Place::empty, "empty"),
              std::pair(&Place::malformed, "malformed")})
            if (before.*field && now.*field)
                changes.CompareValues(Quoted(*(before.*field)), Quoted(*(now.*field)),
                                      std::string(what) + " it reads as: it");
}

void CompareForms(const Form& before, const Form& now, Changes& changes)
{
    changes.CompareSets(before.words, now.words, "has the word");
    changes.CompareFlags(before.anyCase, now.anyCase, "read in any case");
    changes.CompareValues(before.pattern, now.pattern, "the pattern");
    changes.CompareValues(before.writtenPattern, now.writtenPattern, "the pattern of notifications");
}

/// Compares what has the same key; what is gone breaks, what is new was added.
template <class Part, class Compare>
void CompareParts(const std::vector<Part>& before, const std::vector<Part>& now, std::string Part::*key,
                  const char* noun, std::vector<Change>& all, Compare compare)
{
    for (const Part& part : before) {
        Changes changes(part.*key, all);
        if (const Part* const other = Same(now, part, key))
            compare(part, *other, changes);
        else
            changes.Break(std::string("the ") + noun + " is gone");
    }
    for (const Part& part : now)
        if (Same(before, part, key) == nullptr)
            Changes(part.*key, all).Add(std::string("a new ") + noun);
}

/// The paths of what notifications hold, as far as the other model has them, too.
Texts WrittenOrder(const Model& model, const Model& other)
{
    Texts paths;
    for (const Place& place : model.places) {
        const Place* const same = FindPlace(other, place.path);
        if (place.written && same != nullptr && same->written)
            paths.push_back(place.path);
    }
    return paths;
}

}  // namespace

std::vector<Change> Compare(const Model& before, const Model& now)
{
    std::vector<Change> changes;
    Changes roots("the roots", changes);
    roots.CompareValues(before.requestRoot, now.requestRoot, "that of requests");
    roots.CompareValues(before.notificationRoot, now.notificationRoot, "that of notifications");
    CompareParts(before.events, now.events, &Event::identifier, "event", changes, CompareEvents);
    CompareParts(before.places, now.places, &Place::path, "place", changes, ComparePlaces);
    CompareParts(before.forms, now.forms, &Form::name, "form of values", changes, CompareForms);
    const Texts order = WrittenOrder(before, now);
    const Texts orderNow = WrittenOrder(now, before);
    const auto moved = std::mismatch(order.begin(), order.end(), orderNow.begin(), orderNow.end());
    if (moved.first != order.end())
        Changes(*moved.first, changes).Break("stands elsewhere in notifications");
    std::stable_sort(changes.begin(), changes.end(),
                     [](const Change& a, const Change& b) { return a.breaks && !b.breaks; });
    return changes;
}

}  // namespace Protocol
