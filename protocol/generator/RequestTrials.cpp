#include "protocol/generator/RequestTrials.h"

#include "protocol/facts/PlaceFacts.h"
#include "protocol/generator/Places.h"

#include <algorithm>

namespace Protocol::Generator {
namespace {

bool IsWithin(std::string_view path, std::string_view around)
{
    return !around.empty() && path.substr(0, around.size()) == around &&
           (path.size() == around.size() || path[around.size()] == '/' || path[around.size()] == '@');
}

std::string_view ValueOf(const Place& place, RequestTrials::Variant variant)
{
    if (variant != RequestTrials::Variant::kSamples && place.form == "boolean")
        return place.sample == "true" ? "false" : "true";
    if (variant == RequestTrials::Variant::kRoughCuts && place.form == "clipType")
        return "roughCut";
    return place.sample;
}

/// Adds an item that comes last in the list and first by its order: where there is an order at all.
void AddItemInFront(Node& request, std::string_view list, bool withoutOrder)
{
    for (Node& section : request.children)
        if (section.name == list && !section.children.empty()) {
            Node item = section.children.front();
            item.attributes.clear();
            item.Child("filePath").attributes = {{"path", "/media/card/A000.mov"}};
            if (!withoutOrder)
                item.attributes.emplace_back("order", "0");
            section.children.push_back(std::move(item));
        }
}

Node RequestOf(const std::vector<Place>& places, std::string_view without, RequestTrials::Variant variant)
{
    Node request = Request();
    for (const Place& place : places)
        if (place.read && place.form != kEmpty && !IsWithin(place.path, without))
            Put(request, place.path, ValueOf(place, variant));
    for (const Place& place : places)
        if (place.form == "order")
            AddItemInFront(request, ParentOf(place.path), IsWithin(place.path, without));
    return request;
}

/// Adds second items to lists, as the facts have them.
void AddSecondItems(Node& request)
{
    for (std::size_t i = 0; i < kPlaceFactCount; ++i) {
        const std::string_view path = kPlaceFacts[i].path;
        if (*kPlaceFacts[i].second == '\0')
            continue;
        for (Node& list : request.children)
            if (list.name == ParentOf(path)) {
                const bool isNew = list.children.size() < 2 || list.children[1].name != ElementOf(path);
                if (isNew)
                    list.children.insert(list.children.begin() + 1,
                                         Node{std::string(ElementOf(path)), {}, "", false, {}});
                list.children[1].attributes.emplace_back(AttributeOf(path), kPlaceFacts[i].second);
            }
    }
}

void AddAction(const Effect& effect, std::vector<Action>& actions)
{
    Action action;
    if (effect.operation == Recorder::kNotification)
        action = {"reply", effect.arguments[0], ""};
    else if (effect.operation == Recorder::kPost)
        action = {"post", effect.arguments[0], effect.arguments[1]};
    else if (effect.operation.find("::") == std::string::npos)
        action = {"dispatcher", effect.operation, ""};
    else
        action = {"host", effect.operation, ""};
    const auto isKnown = [&action](const Action& known) { return known.name == action.name; };
    if (std::none_of(actions.begin(), actions.end(), isKnown))
        actions.push_back(std::move(action));
}

}  // namespace

Node RequestOfAll(const std::vector<Place>& places)
{
    return RequestOf(places, "", RequestTrials::Variant::kSamples);
}

Node ExampleOf(const std::vector<Place>& places, const std::vector<Handling>& handling)
{
    Node request = Request();
    for (const Place& place : places) {
        const bool isHeader =
            place.path == "browserID@ID" || place.path == "msgID@ID" || place.path == "taskID@ID";
        const bool isRead = std::any_of(handling.begin(), handling.end(), [&place](const Handling& one) {
            return std::find(one.reads.begin(), one.reads.end(), place.path) != one.reads.end();
        });
        const bool isHidden =
            std::any_of(place.hiddenBy.begin(), place.hiddenBy.end(), [&](const std::string& other) {
                return std::any_of(handling.begin(), handling.end(), [&other](const Handling& one) {
                    return std::find(one.reads.begin(), one.reads.end(), other) != one.reads.end();
                });
            });
        if ((isHeader || isRead) && !isHidden && place.form != kEmpty)
            Put(request, place.path, place.sample);
    }
    AddSecondItems(request);
    return request;
}

RequestTrials::RequestTrials(const ConnectorKind& kind, const std::vector<Place>& places)
    : mPlaces(places), mConnector(kind.name), mReference(kind.create(mHost.Dispatcher()))
{
}

std::vector<Effect> RequestTrials::Effects(const Node& request)
{
    return mHost.Raise(mIdentifier, request.Text());
}

Node RequestTrials::All(std::string_view without, Variant variant) const
{
    return RequestOf(mPlaces, without, variant);
}

bool RequestTrials::MattersAmongAll(const Place& place)
{
    for (const Variant variant : kVariants) {
        // Only what others decide takes more than one look.
        const bool isWorthIt =
            variant == Variant::kSamples || place.form == "boolean" || mWithAll.front().empty();
        if (isWorthIt && !(Effects(All(place.path, variant)) == mWithAll[static_cast<std::size_t>(variant)]))
            return true;
    }
    return false;
}

Node RequestTrials::Needed(const std::vector<std::string>& needs) const
{
    Node request = Request();
    for (const Place& place : mPlaces)
        if (std::find(needs.begin(), needs.end(), place.path) != needs.end() && place.form != kEmpty)
            Put(request, place.path, place.sample);
    return request;
}

bool RequestTrials::SectionMatters(std::string_view section, const std::vector<std::string>& needs)
{
    for (const Variant variant : kVariants)
        if (!(Effects(All(section, variant)) == mWithAll[static_cast<std::size_t>(variant)]))
            return true;
    const Node without = Needed(needs);
    Node with = without;
    for (const Place& place : mPlaces)
        if (place.read && place.form != kEmpty && IsWithin(place.path, section))
            Put(with, place.path, place.sample);
    return !(Effects(with) == Effects(without));
}

bool RequestTrials::MattersAlone(const Place& place, const std::vector<std::string>& needs)
{
    Node without = Needed(needs);
    PutNeeds(mPlaces, without, place);
    PutAround(mPlaces, without, place.path);
    for (const Variant variant : kVariants) {
        Node with = without;
        Put(with, place.path, ValueOf(place, variant));
        if (!(Effects(with) == Effects(without)))
            return true;
    }
    return false;
}

std::vector<std::string> RequestTrials::FindNeeds()
{
    std::vector<std::string> needs;
    const Variant variant = mWithAll.front().empty() ? Variant::kOpposites : Variant::kSamples;
    for (const Place& place : mPlaces)
        if (place.read && Effects(All(place.path, variant)).empty())
            needs.push_back(place.path);
    return needs;
}

Handling RequestTrials::Try(const std::string& identifier)
{
    mIdentifier = ferrite::utility::UTF8to16(identifier);
    Handling handling;
    handling.connector = mConnector;
    mSeen.clear();
    for (const Variant variant : kVariants) {
        std::vector<Effect>& effects = mWithAll[static_cast<std::size_t>(variant)];
        effects = Effects(All("", variant));
        mSeen.insert(mSeen.end(), effects.begin(), effects.end());
    }
    const std::vector<Effect> withNone = Effects(Request());
    mSeen.insert(mSeen.end(), withNone.begin(), withNone.end());
    for (const Effect& effect : mSeen)
        AddAction(effect, handling.does);
    if (mSeen.empty())
        return handling;
    if (withNone.empty())
        handling.needs = FindNeeds();
    bool sectionMatters = false;
    for (const Place& place : mPlaces) {
        if (!place.read)
            continue;
        if (place.path.find_first_of("/@") == std::string::npos)  // before what it holds
            sectionMatters = SectionMatters(place.path, handling.needs);
        if (sectionMatters && (MattersAmongAll(place) || MattersAlone(place, handling.needs)))
            handling.reads.push_back(place.path);
    }
    return handling;
}

}  // namespace Protocol::Generator
