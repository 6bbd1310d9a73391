#include "assetconnector/codec/ElementReader.h"

#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/ferrite/DecimalNumbers.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace AC {
namespace {

using xercesc::DOMNode;

/// \return The node itself or the next of its siblings that is an element of that name, or null.
const DOMElement* NamedElementFrom(const DOMNode* node, Name name)
{
    while (node != nullptr &&
           (node->getNodeType() != DOMNode::ELEMENT_NODE || !name.Equals(node->getNodeName())))
        node = node->getNextSibling();
    return static_cast<const DOMElement*>(node);
}

/// \return The value, or null when the attribute is missing.
const XMLCh* AttributeValue(const DOMElement* element, Name attribute)
{
    if (element == nullptr)
        return nullptr;
    const xercesc::DOMAttr* const node = element->getAttributeNode(attribute.Text());
    if (node == nullptr)
        return nullptr;
    const DOMNode* const text = node->getFirstChild();  // the only one; the value itself costs a cast
    return text == nullptr ? xercesc::XMLUni::fgZeroLenString : text->getNodeValue();
}

bool IsTrue(const XMLCh* value)
{
    return std::u16string_view(value) == u"true";
}

}  // namespace

const DOMElement* FindChildElement(const DOMElement* parent, Name name)
{
    return parent == nullptr ? nullptr : NamedElementFrom(parent->getFirstChild(), name);
}

const DOMElement* FindNextSiblingElement(const DOMElement* element, Name name)
{
    return NamedElementFrom(element->getNextSibling(), name);
}

const XMLCh* ValueOf(const DOMElement* element)
{
    const DOMNode* const first = element == nullptr ? nullptr : element->getFirstChild();
    return first == nullptr ? nullptr : first->getNodeValue();
}

void GetAttributeText(const DOMElement* element, Name attribute, UTF16String& target)
{
    if (const XMLCh* const value = AttributeValue(element, attribute))
        target = value;
}

void GetAttributeInt(const DOMElement* element, Name attribute, std::int32_t& target)
{
    if (const XMLCh* const value = AttributeValue(element, attribute))
        target = ferrite::utility::ParseInt32(value);
}

void GetAttributeUInt(const DOMElement* element, Name attribute, std::uint32_t& target)
{
    if (const XMLCh* const value = AttributeValue(element, attribute))
        target = ferrite::utility::ParseUInt32(value);
}

UTF16String AttributeText(const DOMElement* element, Name attribute)
{
    const XMLCh* const value = AttributeValue(element, attribute);
    return value == nullptr ? UTF16String() : UTF16String(value);
}

ElementReader::ElementReader(const DOMElement* element)
{
    if (element != nullptr)
        ForEachElement(element, [this](const DOMElement* child) {
            mChildren.push_back({child->getNodeName(), child});
        });
}

const DOMElement* ElementReader::FindChildElement(Name child) const
{
    for (const Child& entry : mChildren)
        if (child.Equals(entry.name))
            return entry.element;
    return nullptr;
}

void ElementReader::GetChildText(Name child, UTF16String& target) const
{
    if (const XMLCh* const value = ChildValue(child))
        target = value;
    else
        target.clear();
}

UTF16String ElementReader::ChildText(Name child) const
{
    const XMLCh* const value = ChildValue(child);
    return value == nullptr ? UTF16String() : UTF16String(value);
}

void ElementReader::GetChildInt(Name child, std::int32_t& target) const
{
    if (const XMLCh* const value = ChildValue(child))
        target = ferrite::utility::ParseInt32(value);
}

void ElementReader::GetChildBool(Name child, bool& target) const
{
    if (const XMLCh* const value = ChildValue(child))
        target = IsTrue(value);
}

void ElementReader::GetChildFlag(Name child, bool& target) const
{
    target = false;
    GetChildBool(child, target);
}

tempora::FrameRate ElementReader::ParseFrameRate() const
{
    const XMLCh* const value = ChildValue(Vocabulary::kFrameRate);
    return value == nullptr ? tempora::kFrameRate_Zero : AC::ParseFrameRate(value);
}

tempora::FrameRate ElementReader::Multiplier() const
{
    const tempora::FrameRate rate = ParseFrameRate();
    return rate == tempora::kFrameRate_Zero ? tempora::FrameRate{1} : rate;
}

std::optional<tempora::TickTime> ElementReader::ChildTime(Name child, tempora::FrameRate rate) const
{
    const XMLCh* const value = ChildValue(child);
    if (value == nullptr)
        return std::nullopt;
    return tempora::TimeOfFrames(ferrite::utility::ParseInt64(value), rate);
}

}  // namespace AC
