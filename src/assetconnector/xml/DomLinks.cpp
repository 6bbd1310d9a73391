#include "assetconnector/xml/DomLinks.h"

#include <xercesc/util/XercesVersion.hpp>

// The minor version is that of the shared library's name: all of 3.2 have the same nodes.
#if XERCES_VERSION_MAJOR == 3 && XERCES_VERSION_MINOR == 2 && !defined(ASSETCONNECTOR_PUBLIC_DOM_CALLS)

#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMCDATASectionImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>

namespace AC {
namespace {

using xercesc::DOMNode;

/// What a node has for being in a tree, and for being a child.
struct Parts
{
    xercesc::DOMNodeImpl* node;
    xercesc::DOMChildNode* child;
};

/// \param node An element, a text or a CDATA section: what a document that is being built consists of.
Parts PartsOf(DOMNode* node)
{
    switch (node->getNodeType()) {
        case DOMNode::ELEMENT_NODE: {
            auto* const element = static_cast<xercesc::DOMElementImpl*>(node);
            return {&element->fNode, &element->fChild};
        }
        case DOMNode::CDATA_SECTION_NODE: {
            auto* const section = static_cast<xercesc::DOMCDATASectionImpl*>(node);
            return {section->getNodeImpl(), section->getChildNodeImpl()};
        }
        default: {
            auto* const text = static_cast<xercesc::DOMTextImpl*>(node);
            return {&text->fNode, &text->fChild};
        }
    }
}

/// The first child is marked as such, and its previous sibling is the last child.
void Append(DOMNode* parent, DOMNode*& firstChild, DOMNode* child)
{
    const Parts parts = PartsOf(child);
    parts.node->fOwnerNode = parent;
    parts.node->isOwned(true);
    if (firstChild == nullptr) {
        parts.node->isFirstChild(true);
        parts.child->previousSibling = child;
        firstChild = child;
        return;
    }
    DOMNode*& last = PartsOf(firstChild).child->previousSibling;
    parts.child->previousSibling = last;
    PartsOf(last).child->nextSibling = child;
    last = child;
}

/// The attributes of an element, sorted by name; null before there is room for any.
struct AttributeMap : xercesc::DOMAttrMapImpl
{
    static xercesc::DOMNodeVector*& NodesOf(xercesc::DOMAttrMapImpl& map)
    {
        return map.*&AttributeMap::fNodes;
    }
};

}  // namespace

void DomLinks::AppendChild(xercesc::DOMElement* parent, DOMNode* child)
{
    Append(parent, static_cast<xercesc::DOMElementImpl*>(parent)->fParent.fFirstChild, child);
}

void DomLinks::AddAttribute(xercesc::DOMElement* element, xercesc::DOMAttr* attribute, const XMLCh* value,
                            std::size_t count)
{
    auto* const node = static_cast<xercesc::DOMAttrImpl*>(attribute);
    Append(node, node->fParent.fFirstChild, node->fParent.fOwnerDocument->createTextNode(value));
    xercesc::DOMAttrMapImpl& map = *static_cast<xercesc::DOMElementImpl*>(element)->fAttributes;
    map.reserve(count);
    // The place of a name that is not there is given as -1 minus the place.
    const int place = -1 - map.findNamePoint(node->fName);
    AttributeMap::NodesOf(map)->insertElementAt(node, static_cast<XMLSize_t>(place));
    node->fNode.fOwnerNode = element;
    node->fNode.isOwned(true);
}

DOMNode* DomLinks::ParentOf(xercesc::DOMElement* element)
{
    return static_cast<xercesc::DOMElementImpl*>(element)->fNode.fOwnerNode;
}

}  // namespace AC

#else

namespace AC {

void DomLinks::AppendChild(xercesc::DOMElement* parent, xercesc::DOMNode* child)
{
    parent->appendChild(child);
}

void DomLinks::AddAttribute(xercesc::DOMElement* element, xercesc::DOMAttr* attribute, const XMLCh* value,
                            std::size_t /*count*/)
{
    attribute->setValue(value);
    element->setAttributeNode(attribute);
}

xercesc::DOMNode* DomLinks::ParentOf(xercesc::DOMElement* element)
{
    return element->getParentNode();
}

}  // namespace AC

#endif
