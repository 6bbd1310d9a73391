#pragma once

#include "assetconnector/codec/Vocabulary.h"
#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/host/tempora/Time.h"

#include <boost/container/small_vector.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <cstdint>
#include <optional>
#include <utility>

/// Reading the DOM. The value of an element is that of its first child node, a text: an element without
/// children, or whose first child is an element, has none. A null element counts as one without the child
/// or attribute asked for. Walks go from sibling to sibling: the DOM's node lists cast at every step.
namespace AC {

using Vocabulary::Name;
using xercesc::DOMElement;

/// \return The first child element of that name, or null.
const DOMElement* FindChildElement(const DOMElement* parent, Name name);

/// \return The next sibling element of that name, or null.
const DOMElement* FindNextSiblingElement(const DOMElement* element, Name name);

/// Calls visit(item) for each child element of that name, in document order.
template <class Visit>
void ForEachItem(const DOMElement* section, Name name, Visit visit)
{
    for (const DOMElement* item = FindChildElement(section, name); item != nullptr;
         item = FindNextSiblingElement(item, name))
        visit(item);
}

/// Calls visit(child) for each child element, in document order.
template <class Visit>
void ForEachElement(const DOMElement* parent, Visit visit)
{
    for (const xercesc::DOMNode* node = parent->getFirstChild(); node != nullptr;
         node = node->getNextSibling())
        if (node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE)
            visit(static_cast<const DOMElement*>(node));
}

/// \return The value of an element, or null.
const XMLCh* ValueOf(const DOMElement* element);

/// Each of the three leaves the target as it is when the attribute is missing.
void GetAttributeText(const DOMElement* element, Name attribute, UTF16String& target);
void GetAttributeInt(const DOMElement* element, Name attribute, std::int32_t& target);
void GetAttributeUInt(const DOMElement* element, Name attribute, std::uint32_t& target);

/// \return The attribute's value; empty when it is missing.
UTF16String AttributeText(const DOMElement* element, Name attribute);

/// Calls visit(value) with the attribute of each child element of that name, in document order, where it is
/// not empty.
template <class Visit>
void ForEachAttribute(const DOMElement* section, Name item, Name attribute, Visit visit)
{
    ForEachItem(section, item, [&](const DOMElement* element) {
        UTF16String value = AttributeText(element, attribute);
        if (!value.empty())
            visit(std::move(value));
    });
}

/// An element and its child elements, collected in one pass, so that looking up many names costs one walk.
/// Where a name occurs more than once, the first child of that name counts.
class ElementReader
{
public:
    explicit ElementReader(const DOMElement* element);

    const DOMElement* FindChildElement(Name child) const;
    bool Has(Name child) const { return FindChildElement(child) != nullptr; }

    /// The target always receives something: the empty string when there is no such child or value.
    void GetChildText(Name child, UTF16String& target) const;
    UTF16String ChildText(Name child) const;

    /// These leave the target as it is when there is no such child or value.
    void GetChildInt(Name child, std::int32_t& target) const;
    void GetChildBool(Name child, bool& target) const;

    /// The target is true for a child with the value "true", else false.
    void GetChildFlag(Name child, bool& target) const;

    /// \return The attribute of the child; empty when either is missing.
    UTF16String ChildAttribute(Name child, Name attribute) const
    {
        return AttributeText(FindChildElement(child), attribute);
    }

    /// \return The rate in the child "frameRate"; kFrameRate_Zero when it is missing or unusable.
    tempora::FrameRate ParseFrameRate() const;

    /// \return The same rate, or one tick per frame in place of kFrameRate_Zero.
    tempora::FrameRate Multiplier() const;

    /// \return The time that the child gives as frames of the rate; nothing when it is missing or has no
    ///         value.
    std::optional<tempora::TickTime> ChildTime(Name child, tempora::FrameRate rate) const;

    /// \return The same for an item: kTime_Invalid in place of nothing.
    tempora::TickTime ItemTime(Name child, tempora::FrameRate rate) const
    {
        return ChildTime(child, rate).value_or(tempora::kTime_Invalid);
    }

private:
    const XMLCh* ChildValue(Name child) const { return ValueOf(FindChildElement(child)); }

    struct Child
    {
        const XMLCh* name;
        const DOMElement* element;
    };
    boost::container::small_vector<Child, 20> mChildren;
};

}  // namespace AC
