#include "protocol/check/EventRules.h"

#include <algorithm>
#include <set>

namespace Protocol::Checking {
namespace {

/// \return The event that was meant; null when none is like it.
const Event* NearestEvent(const Model& model, std::string_view identifier)
{
    std::vector<std::string_view> names;
    for (const Event& event : model.events)
        names.push_back(ShortName(event.identifier));
    const std::string_view nearest = Nearest(names, ShortName(identifier));
    const auto found = std::find_if(model.events.begin(), model.events.end(), [nearest](const Event& event) {
        return ShortName(event.identifier) == nearest;
    });
    return found == model.events.end() ? nullptr : &*found;
}

/// \return What to do instead of raising a notification.
std::string RaiseInstead(const Model& model, const Event& notification)
{
    for (const Event& event : model.events)
        if (std::find(event.answers.begin(), event.answers.end(), notification.identifier) !=
            event.answers.end())
            return "raise " + event.identifier + ", which it answers";
    return "wait until the host sends it";
}

bool IsHandled(const Event& event)
{
    return std::any_of(event.handling.begin(), event.handling.end(),
                       [](const Handling& handling) { return handling.handled; });
}

using Paths = std::set<std::string_view>;

/// What a request reads, at any connector.
class ReadPlaces
{
public:
    ReadPlaces(const Model& model, const Event& event)
    {
        for (const Handling& handling : event.handling)
            mPaths.insert(handling.reads.begin(), handling.reads.end());
        for (const std::string_view path : mPaths)
            if (const Place* const place = FindPlace(model, path); place != nullptr && !place->member.empty())
                mMembers.insert(place->member);
    }

    /// Also what changes a member that is read, such as the order of items.
    bool Holds(const Place& place) const
    {
        return mPaths.count(place.path) != 0 ||
               std::any_of(place.also.begin(), place.also.end(),
                           [this](const std::string& member) { return mMembers.count(member) != 0; });
    }

private:
    Paths mPaths;
    Paths mMembers;
};

/// \return Whether the element only says which message or task this is, as the header does: a panel sends
///         that with any request.
bool IsIdentification(const Slot& slot)
{
    const auto& attributes = slot.attributes;
    return ParentOf(slot.Path()).empty() && attributes.size() == 1 &&
           (attributes.front()->form == "guid" || attributes.front()->member.compare(0, 7, "header.") == 0);
}

void CheckUnread(Context& context, const Event& event)
{
    const ReadPlaces reads(context.model, event);
    std::vector<bool> isUnread(context.tree.elements.size(), false);
    for (std::size_t element = 1; element < isUnread.size(); ++element) {
        const Slot* const slot = context.slots[element];
        const std::size_t parent = context.At(element).parent;
        isUnread[element] = slot == nullptr || isUnread[parent];
        if (isUnread[element] || IsIdentification(*slot) || reads.Holds(*slot->place))
            continue;
        isUnread[element] = true;
        context.Add(element, {Kind::kNotReadByRequest,
                              context.quoting.Tag(context.At(element).name) + " is not read by " +
                                  std::string(ShortName(event.identifier)),
                              "leave it out"});
    }
}

/// \return The places of the tree that have something in them.
Paths PlacesOf(const Context& context)
{
    Paths paths;
    for (std::size_t element = 1; element < context.tree.elements.size(); ++element) {
        const Slot* const slot = context.slots[element];
        if (slot == nullptr)
            continue;
        paths.insert(slot->Path());
        for (const Place* place : slot->attributes) {
            const std::string* const value =
                FindAttribute(context.At(element), std::string(AttributeOf(place->path)));
            if (value != nullptr && !value->empty())
                paths.insert(place->path);
        }
    }
    return paths;
}

/// Which of message and task is not said, though the request passes it on or its answer repeats it.
void CheckIdentifiers(Context& context, const Event& event, const Paths& paths)
{
    for (const Place& place : context.model.places) {
        const bool isIdentifier = place.member.compare(0, 7, "header.") == 0 && place.form == "guid";
        const bool isRead =
            std::any_of(event.handling.begin(), event.handling.end(), [&place](const Handling& handling) {
                return std::find(handling.reads.begin(), handling.reads.end(), place.path) !=
                       handling.reads.end();
            });
        const std::string element(ElementOf(place.path));
        if (isIdentifier && isRead && paths.count(place.path) == 0)
            context.Add(0, {Kind::kNoIdentifier,
                            std::string(ShortName(event.identifier)) + " has no <" + element +
                                ">: nobody can tell it, or its answer, from others",
                            "add it"});
    }
}

void CheckNeeds(Context& context, const Event& event, const Paths& paths)
{
    Paths said;
    for (const Handling& handling : event.handling) {
        // Those around come first, and the last is what a text should have.
        const auto missing =
            std::find_if(handling.needs.begin(), handling.needs.end(),
                         [&paths](const std::string& path) { return paths.count(path) == 0; });
        if (missing == handling.needs.end() || !said.insert(handling.needs.back()).second)
            continue;
        const bool byAll = std::all_of(
            event.handling.begin(), event.handling.end(),
            [&](const Handling& other) { return !other.handled || other.needs == handling.needs; });
        context.Add(0, {Kind::kNeeded,
                        std::string(ShortName(event.identifier)) + " does nothing" +
                            (byAll ? "" : " at the connector " + handling.connector) + " without " +
                            handling.needs.back(),
                        "add it"});
    }
}

}  // namespace

std::optional<Remark> JudgeEvent(const Model& model, const std::string& identifier, const Quoting& quoting)
{
    const Event* const event = FindEvent(model, identifier);
    if (event == nullptr) {
        for (const Event& each : model.events)
            if (each.constant == identifier)
                return Remark{Kind::kUnknownEvent, identifier + " is the constant of an identifier",
                              "give " + each.identifier};
        const Event* const nearest = NearestEvent(model, identifier);
        return Remark{
            Kind::kUnknownEvent, "no event has the identifier " + quoting.Value(identifier),
            nearest == nullptr ? "see asset-connector events" : "the nearest is " + nearest->identifier};
    }
    const std::string name(ShortName(identifier));
    if (event->kind != "request")
        return Remark{Kind::kNotARequest, name + " is a notification: panels do not raise it",
                      RaiseInstead(model, *event)};
    if (!IsHandled(*event))
        return Remark{Kind::kNotHandled, "nobody handles " + name + ": nothing happens",
                      "do not wait for an answer"};
    return std::nullopt;
}

void CheckRequest(Context& context, const Event& event)
{
    CheckUnread(context, event);
    const Paths paths = PlacesOf(context);
    CheckIdentifiers(context, event, paths);
    CheckNeeds(context, event, paths);
}

}  // namespace Protocol::Checking
