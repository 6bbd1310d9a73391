#include "protocol/check/ItemRules.h"

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/tempora/Time.h"
#include "protocol/check/NumberRules.h"

#include <algorithm>
#include <map>

namespace Protocol::Checking {
namespace {

/// \return The attribute that orders items; null where none does.
const Place* OrderPlace(const Slot& item)
{
    const auto found = std::find_if(item.attributes.begin(), item.attributes.end(),
                                    [](const Place* attribute) { return attribute->form == "order"; });
    return found == item.attributes.end() ? nullptr : *found;
}

/// Items of one list, as the host sorts them.
class Ordered
{
public:
    Ordered(Context& context, std::size_t count) : mContext(context), mCount(count) {}

    void Add(std::size_t item, const Place& place)
    {
        const std::string name(AttributeOf(place.path));
        const std::string tag = mContext.quoting.Tag(mContext.At(item).name);
        const std::string* const value = FindAttribute(mContext.At(item), name);
        const std::int32_t order = value == nullptr ? -1 : OrderOf(*value);
        const auto [before, isFirst] = mFirst.emplace(order, item);
        // Something else may be wrong with it, of which enough was said.
        const bool isKnownToBeBad = value == nullptr
                                        ? mContext.isReported[item]
                                        : JudgeNumber(mContext.quoting, place.form, "", *value).has_value();
        if (isKnownToBeBad || mCount < 2)
            return;
        if (!isFirst)
            mContext.Add(item, Dropped(tag, value == nullptr, *before), '@' + name);
        else if (order < 0)
            mContext.Add(item,
                         {Kind::kNoOrder,
                          tag + (value == nullptr ? " has no order" : " has a negative order") +
                              " and comes behind all that have one",
                          "number the items from 1"},
                         '@' + name);
    }

private:
    Remark Dropped(const std::string& tag, bool isMissing,
                   const std::pair<const std::int32_t, std::size_t>& first)
    {
        const std::string where = PlaceText(mContext.At(first.second).place);
        if (isMissing)
            return {Kind::kNoOrder, tag + " has no order and is dropped: so has the one in " + where,
                    "number the items from 1"};
        return {Kind::kSameOrder,
                tag + " is dropped: the one in " + where + " has its order, " + std::to_string(first.first),
                "number the items from 1"};
    }

    Context& mContext;
    std::size_t mCount;
    std::map<std::int32_t, std::size_t> mFirst;
};

/// \return Whether a child that is not read, and of which that was said, may have been meant to be called so.
bool IsMisspelt(const Context& context, std::size_t element, std::string_view name)
{
    const std::vector<std::size_t>& children = context.At(element).children;
    return std::any_of(children.begin(), children.end(), [&](std::size_t child) {
        return context.slots[child] == nullptr && IsNear(context.At(child).name, name);
    });
}

/// \return Whether the host takes the value for one: a GUID of zeros is none where a malformed one is none.
bool Counts(const Place& place, const std::string& value)
{
    return !value.empty() &&
           (place.malformed != Json::array() ||
            !ferrite::utility::Guid::StringToGUID(ferrite::utility::UTF8to16(value)).IsZero());
}

/// \return Whether something that stands in its place is read differently from nothing.
bool SaysSomething(const Context& context, const Place& place, const std::string& value)
{
    if (place.form == "time")
        return TimeOf(value) != 0;
    const Form* const form = FindForm(context.model, place.form);
    return !value.empty() && (form == nullptr || form->words.empty() || form->words.front() == value);
}

Remark Lacking(const Place& place, const std::string& subject, const Place& needed)
{
    if (place.form != "time")
        return {Kind::kLacksCompanion,
                subject + " says nothing without " + std::string(ElementOf(needed.path)), "add it"};
    const bool isZero = needed.missing == Json(0);
    return {Kind::kTimeWithoutRate,
            subject + " has no rate: it " +
                (isZero ? "reads as 0"
                        : "counts ticks, of which a second has " + std::to_string(tempora::kTicksPerSecond)),
            "add <" + std::string(ElementOf(needed.path)) + "> beside it"};
}

void CheckValue(Context& context, std::size_t element, const Place& place, const std::string& value)
{
    const std::string attribute(AttributeOf(place.path));
    const std::string tag = context.quoting.Tag(context.At(element).name);
    const std::string subject = attribute.empty() ? tag : '"' + attribute + "\" of " + tag;
    const std::string name = attribute.empty() ? attribute : '@' + attribute;
    for (const std::string& hider : place.hiddenBy)
        if (const std::string* const other = context.FindValue(element, hider); other && !other->empty())
            context.Add(element,
                        {Kind::kHidden,
                         subject + " is not read: \"" + std::string(AttributeOf(hider)) + "\" replaces it",
                         "write one of the two"},
                        name);
    if (!SaysSomething(context, place, value))
        return;
    for (const std::string& needed : place.needs) {
        const std::string* const other = context.FindValue(element, needed);
        const Place* const neededPlace = FindPlace(context.model, needed);
        // What an item is nothing without is said of the item.
        if (neededPlace != nullptr && !IsMisspelt(context, context.At(element).parent, ElementOf(needed)) &&
            neededPlace->missing != Json::array() && (other == nullptr || other->empty())) {
            context.Add(element, Lacking(place, subject, *neededPlace), name);
            return;
        }
    }
}

/// \return Whether the host keeps the list as a map, in which a key stands once.
bool IsMap(const Model& model, const Place& list)
{
    const Record* const message = FindRecord(model, "Message");
    return message != nullptr &&
           std::any_of(message->members.begin(), message->members.end(), [&list](const Member& member) {
               return member.name == list.member && member.type.compare(0, 4, "map:") == 0;
           });
}

/// \return What an item is nothing without; empty when something of it is missing.
std::vector<UTF16String> KeyOf(const Context& context, std::size_t item)
{
    std::vector<UTF16String> key;
    for (const Place* place : context.slots[item]->required) {
        const std::string* const value = context.FindValue(item, place->path);
        if (value == nullptr || !Counts(*place, *value))
            return {};
        key.push_back(ferrite::utility::Guid::StringToGUID(ferrite::utility::UTF8to16(*value)).AsString());
    }
    return key;
}

}  // namespace

void CheckOrder(Context& context, std::size_t list)
{
    std::size_t count = 0;
    const auto forEach = [&](auto visit) {
        for (const std::size_t child : context.At(list).children)
            if (context.slots[child] != nullptr)
                if (const Place* const place = OrderPlace(*context.slots[child]))
                    visit(child, *place);
    };
    forEach([&count](std::size_t, const Place&) { ++count; });
    Ordered ordered(context, count);
    forEach([&ordered](std::size_t item, const Place& place) { ordered.Add(item, place); });
}

void CheckKeys(Context& context, std::size_t list)
{
    const Place* const place = context.slots[list]->place;
    if (place == nullptr || place->form != kList || !IsMap(context.model, *place))
        return;
    std::map<std::vector<UTF16String>, std::size_t> last;
    for (const std::size_t item : context.At(list).children) {
        const std::vector<UTF16String> key =
            context.slots[item] == nullptr ? std::vector<UTF16String>() : KeyOf(context, item);
        if (key.empty())
            continue;
        const auto [before, isFirst] = last.emplace(key, item);
        if (!isFirst)
            context.Add(before->second,
                        {Kind::kSameGuids,
                         context.quoting.Tag(context.At(before->second).name) +
                             " is replaced by the one in " + PlaceText(context.At(item).place),
                         "keep one"});
        before->second = item;
    }
}

void CheckRequired(Context& context, std::size_t item)
{
    for (const Place* place : context.slots[item]->required) {
        const std::string* const value = context.FindValue(item, place->path);
        const std::string within(ElementOf(place->path));
        const bool isOwn = within == ElementOf(context.slots[item]->Path());
        const std::size_t holder = isOwn ? item : FindChild(context.tree, item, within);
        if ((value != nullptr && Counts(*place, *value)) || context.isReported[item] ||
            (holder == kNoElement ? IsMisspelt(context, item, within) : context.isReported[holder]))
            continue;
        const std::string attribute(AttributeOf(place->path));
        const std::string tag = context.quoting.Tag(context.At(item).name);
        context.Add(item,
                    {Kind::kLeftOut,
                     tag + " is left out: it has no " +
                         (isOwn ? '"' + attribute + '"' : '<' + within + "> with \"" + attribute + '"') +
                         (value == nullptr || value->empty() ? "" : " that is a GUID"),
                     "add it"},
                    isOwn ? '@' + attribute : "/" + within + '@' + attribute);
    }
}

void CheckCompanions(Context& context, std::size_t element)
{
    const Slot& slot = *context.slots[element];
    if (slot.HoldsText() && context.At(element).value)
        CheckValue(context, element, *slot.place, *context.At(element).value);
    for (const Place* place : slot.attributes)
        if (const std::string* const value =
                FindAttribute(context.At(element), std::string(AttributeOf(place->path))))
            CheckValue(context, element, *place, *value);
}

}  // namespace Protocol::Checking
