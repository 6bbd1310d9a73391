#pragma once

#include <xercesc/dom/DOM.hpp>

#include <cstddef>

/// Links between the nodes of a document that is being built. The DOM's own calls find out by several dynamic
/// casts a node what their callers know. These take it from the node's class, where the version of the XML
/// library is one whose nodes are known; elsewhere they are the DOM's calls. They leave what the calls leave,
/// so every call of the DOM works on it.
///
/// The document has no ranges and no lists of nodes in use. One thread, as for all of a document.
namespace AC::DomLinks {

/// Appends a node as the last child. Allocates nothing where nodes are known.
/// \param parent An element.
/// \param child A new element, text or CDATA section of the same document: without children, in no tree.
void AppendChild(xercesc::DOMElement* parent, xercesc::DOMNode* child);

/// Adds an attribute to an element.
/// \param attribute A new one of the same document, without a value. The element has none of that name.
/// \param value Ends with its only zero.
/// \param count How many attributes the element is expected to get; for room, no limit.
/// \throws xercesc::OutOfMemoryException; the element is then as it was.
void AddAttribute(xercesc::DOMElement* element, xercesc::DOMAttr* attribute, const XMLCh* value,
                  std::size_t count = 1);

/// \return The parent of an element that has one.
xercesc::DOMNode* ParentOf(xercesc::DOMElement* element);

}  // namespace AC::DomLinks
