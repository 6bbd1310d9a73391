#include "protocol/check/Shape.h"

#include <algorithm>
#include <array>

namespace Protocol::Checking {
namespace {

/// \return The nearest element around that has the same name.
std::string_view OuterOfSameName(std::string_view path)
{
    std::string_view outer = ParentOf(path);
    while (!outer.empty() && ElementOf(outer) != ElementOf(path))
        outer = ParentOf(outer);
    return outer;
}

}  // namespace

bool Slot::HoldsText() const
{
    constexpr std::array kOthers{kBlock, kList, kItem, kProperties, kEmpty};
    return place != nullptr && std::find(kOthers.begin(), kOthers.end(), place->form) == kOthers.end();
}

const Slot* Slot::Child(std::string_view name) const
{
    const auto found = content->children.find(name);
    return found == content->children.end() ? anyChild : found->second;
}

const Place* Slot::Attribute(std::string_view name) const
{
    const auto found = std::find_if(attributes.begin(), attributes.end(), [name](const Place* attribute) {
        return AttributeOf(attribute->path) == name;
    });
    return found == attributes.end() ? nullptr : *found;
}

Shape::Shape(const Model& model)
{
    mByPath[""] = &mSlots.emplace_back();
    mSlots.front().content = &mSlots.front();
    for (const Place& place : model.places)
        Add(place);
}

Slot& Shape::At(std::string_view path)
{
    return *mByPath.at(path);
}

void Shape::Add(const Place& place)
{
    const std::string_view parent = ParentOf(place.path);
    if (!AttributeOf(place.path).empty()) {
        if (place.read) {
            At(std::string_view(place.path).substr(0, place.path.find('@'))).attributes.push_back(&place);
            AddRequired(place);
        }
        return;
    }
    Slot& slot = mSlots.emplace_back();
    slot.place = &place;
    slot.isRead = place.read;
    slot.content = &slot;
    if (place.form == kList && !OuterOfSameName(place.path).empty())
        slot.content = &At(OuterOfSameName(place.path));
    mByPath[place.path] = &slot;
    Slot& around = At(parent);
    if (ElementOf(place.path) == kAnyName)
        around.anyChild = &slot;
    else
        around.children[ElementOf(place.path)] = &slot;
}

/// Where the list is empty without the attribute, the item is nothing without it.
void Shape::AddRequired(const Place& attribute)
{
    if (attribute.missing != Json::array())
        return;
    std::string_view path = std::string_view(attribute.path).substr(0, attribute.path.find('@'));
    while (!path.empty() && At(path).place->form != kItem)
        path = ParentOf(path);
    if (!path.empty() && At(path).place->member == attribute.member)
        At(path).required.push_back(&attribute);
}

}  // namespace Protocol::Checking
