#include "protocol/check/NameRules.h"

#include <algorithm>
#include <unordered_map>

namespace Protocol::Checking {
namespace {

/// \return A way to write the element with its value.
std::string Usage(const Slot& slot)
{
    const std::string name(ElementOf(slot.Path()));
    if (slot.HoldsText())
        return '<' + name + ">...</" + name + '>';
    if (slot.attributes.empty())
        return '<' + name + '>';
    return '<' + name + ' ' + std::string(AttributeOf(slot.attributes.front()->path)) + "=\"...\"/>";
}

/// \return The child that is read and called so but for capitals; null without one.
const Slot* ChildFolded(const Slot& slot, std::string_view name)
{
    for (const auto& [known, child] : slot.content->children)
        if (child->isRead && EqualsFolded(known, name))
            return child;
    return nullptr;
}

const Place* AttributeFolded(const Slot& slot, std::string_view name)
{
    for (const Place* attribute : slot.attributes)
        if (EqualsFolded(AttributeOf(attribute->path), name))
            return attribute;
    return nullptr;
}

std::string WriteInstead(const std::string& usage)
{
    return "write " + usage;
}

/// What is said of any name that nobody reads here.
/// \param what The element or attribute. \param here The nearest name that is read here, as it is written.
/// \param known The name, \param nearest what is like it, wherever they belong; each may be null.
Remark JudgeName(Kind unknown, const std::string& what, const std::string& here, const NameBook::Entry* known,
                 const NameBook::Entry* nearest, std::string_view around)
{
    if (known != nullptr && known->isRead)
        return {Kind::kWrongPlace, what + " is not read here", "it belongs " + Belongs(*known, around)};
    if (known != nullptr)
        return {Kind::kHostWrites, what + " is not read: only the host writes it", "leave it out"};
    if (!here.empty())
        return {unknown, what + " is not read: nothing is called so", "the nearest name here is " + here};
    if (nearest != nullptr)
        return {unknown, what + " is not read: nothing is called so",
                "the nearest name is " + std::string(nearest->name) + ", which belongs " +
                    Belongs(*nearest, around)};
    return {unknown, what + " is not read: nothing is called so", "leave it out"};
}

Remark JudgeChild(const Context& context, const Slot& slot, const Element& parent, const Element& child)
{
    const std::string tag = context.quoting.Tag(child.name);
    if (slot.Child(child.name) != nullptr)
        return {Kind::kHostWrites, tag + " is not read: only the host writes it", "leave it out"};
    if (const Slot* const folded = ChildFolded(slot, child.name))
        return {Kind::kWrongCase, tag + " is not read: names are case-sensitive",
                WriteInstead('<' + std::string(ElementOf(folded->Path())) + '>')};
    if (const Place* const attribute = AttributeFolded(slot, child.name))
        return {Kind::kTextForAttribute,
                tag + " is not read: in " + context.quoting.Tag(parent.name) + " it is an attribute",
                WriteInstead('<' + context.quoting.Name(parent.name) + ' ' +
                             std::string(AttributeOf(attribute->path)) + "=\"...\">")};
    const NameBook::Entry* const asElement = context.names.FindElement(child.name);
    const NameBook::Entry* const asAttribute = context.names.FindAttribute(child.name);
    if (asElement == nullptr && asAttribute != nullptr)
        return {Kind::kTextForAttribute, tag + " is not read: it is an attribute",
                "it belongs " + Belongs(*asAttribute, slot.Path())};
    std::vector<std::string_view> names;
    for (const auto& [name, known] : slot.content->children)
        if (known->isRead)
            names.push_back(name);
    const std::string here(Nearest(names, child.name));
    return JudgeName(Kind::kUnknownElement, tag, here.empty() ? here : '<' + here + '>', asElement,
                     context.names.NearestElement(child.name), slot.Path());
}

Remark JudgeAttribute(const Context& context, const Slot& slot, const Element& element,
                      const std::string& name)
{
    const std::string what =
        "the attribute \"" + context.quoting.Name(name) + "\" of " + context.quoting.Tag(element.name);
    if (const Place* const folded = AttributeFolded(slot, name))
        return {Kind::kWrongCase, what + " is not read: names are case-sensitive",
                WriteInstead(std::string(AttributeOf(folded->path)))};
    if (const Slot* const child = ChildFolded(slot, name))
        return {Kind::kAttributeForText, what + " is not read: here it is an element",
                WriteInstead(Usage(*child))};
    if (slot.HoldsText() && !element.value && element.children.empty())
        return {Kind::kAttributeForText, what + " is not read: the value is a text",
                WriteInstead(Usage(slot))};
    const NameBook::Entry* const asElement = context.names.FindElement(name);
    const NameBook::Entry* const asAttribute = context.names.FindAttribute(name);
    if (asAttribute == nullptr && asElement != nullptr && asElement->isRead)
        return {Kind::kAttributeForText, what + " is not read: it is an element",
                "it belongs " + Belongs(*asElement, slot.Path())};
    std::vector<std::string_view> names;
    for (const Place* attribute : slot.attributes)
        names.push_back(AttributeOf(attribute->path));
    return JudgeName(Kind::kUnknownAttribute, what, std::string(Nearest(names, name)), asAttribute,
                     context.names.NearestAttribute(name), slot.Path());
}

/// Declarations for XML tools, which mean nothing to the host and lose nothing.
bool IsForTools(const std::string& attribute)
{
    return attribute.compare(0, 5, "xmlns") == 0 || attribute.compare(0, 4, "xml:") == 0;
}

/// \return Whether of several children of that kind the first alone is read.
bool CountsOnce(const Slot& child)
{
    return !child.place->many || ElementOf(child.Path()) == kAnyName;
}

}  // namespace

void CheckChildren(Context& context, std::size_t element)
{
    const Slot& slot = *context.slots[element];
    const Element& parent = context.At(element);
    std::unordered_map<std::string_view, std::size_t> first;
    for (const std::size_t index : parent.children) {
        const Element& child = context.At(index);
        const Slot* const known = slot.Child(child.name);
        const std::string path = '/' + context.quoting.Name(child.name);
        const auto add = [&](const Remark& remark) {
            context.report.Add(child.place, std::string(slot.Path()) + (slot.place ? path : path.substr(1)),
                               remark);
        };
        if (known == nullptr || !known->isRead) {
            add(JudgeChild(context, slot, parent, child));
            continue;
        }
        const auto [before, isFirst] = first.emplace(child.name, index);
        if (!isFirst && CountsOnce(*known)) {
            add({Kind::kDoubled,
                 context.quoting.Tag(child.name) + " is not read: the first one counts, in " +
                     PlaceText(context.At(before->second).place),
                 "keep one"});
            continue;
        }
        context.slots[index] = known;
    }
}

void CheckAttributes(Context& context, std::size_t element)
{
    const Slot& slot = *context.slots[element];
    for (const auto& [name, value] : context.At(element).attributes)
        if (slot.Attribute(name) == nullptr && !IsForTools(name))
            context.Add(element, JudgeAttribute(context, slot, context.At(element), name),
                        '@' + context.quoting.Name(name));
}

}  // namespace Protocol::Checking
