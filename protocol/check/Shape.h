#pragma once

#include "protocol/Model.h"

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Protocol::Checking {

/// The name in a path of elements that may have any.
constexpr std::string_view kAnyName = "*";

/// An element of the model with what may stand in it.
struct Slot
{
    const Place* place = nullptr;   ///< Null for the root.
    const Slot* content = nullptr;  ///< Whose children stand in it: a list in a list holds the outer's items.
    std::map<std::string_view, const Slot*> children;
    const Slot* anyChild = nullptr;        ///< For children of any name.
    std::vector<const Place*> attributes;  ///< Those that are read.
    std::vector<const Place*> required;    ///< Attributes without which an item is left out.
    bool isRead = false;                   ///< It or something in it.

    std::string_view Path() const { return place == nullptr ? std::string_view() : place->path; }

    /// Whether the element's own text is read.
    bool HoldsText() const;

    /// \return The child of that name, read or not; null without one.
    const Slot* Child(std::string_view name) const;

    /// \return The attribute that is read; null without one.
    const Place* Attribute(std::string_view name) const;
};

/// A model, arranged as texts are. It refers to the model.
class Shape
{
public:
    explicit Shape(const Model& model);

    const Slot& Root() const { return mSlots.front(); }

    /// The root, then all others in the order of the model.
    const std::deque<Slot>& Slots() const { return mSlots; }

private:
    Slot& At(std::string_view path);
    void Add(const Place& place);
    void AddRequired(const Place& attribute);

    std::deque<Slot> mSlots;
    std::map<std::string_view, Slot*> mByPath;
};

}  // namespace Protocol::Checking
