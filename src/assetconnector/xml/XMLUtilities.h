#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/xml/MessageParser.h"

#include <xercesc/dom/DOM.hpp>

/// Between texts and DOM documents. Limits and parser settings are those of MessageParser, so that no host
/// can weaken them. Pure but for the documents; any thread, each with its own document.
namespace Ridge::XMLUtilities {

/// Parses a text.
/// \param document Receives the document, owned by the parser; unchanged on failure.
/// \return false for a text that does not parse, including every text with a DOCTYPE, an entity other than
///         the five named ones, a zero character, half a surrogate pair, and what is beyond the limits of
///         AC::MessageParser.
/// \throws xercesc::OutOfMemoryException, std::bad_alloc.
AC_API bool GetDOMDocument(AC::MessageParser& parser, const UTF16String& text,
                           xercesc::DOMDocument*& document);

/// The same; \param error receives place and reason on failure.
AC_API bool GetDOMDocument(AC::MessageParser& parser, const UTF16String& text,
                           xercesc::DOMDocument*& document, AC::ParseError& error);

/// \return A new document without a document element; the caller releases it. Never null.
/// \throws std::logic_error before the XML platform is initialised; xercesc::OutOfMemoryException.
AC_API xercesc::DOMDocument* CreateDomDocument();

/// \return The document's text: no declaration, no indentation; an element without content as `<a/>`;
///         attributes in the DOM's order. A unit that XML 1.0 cannot carry becomes U+FFFD, so the text is
///         well-formed whatever the tree holds, and CR, and in attributes LF and TAB, become references,
///         so that they survive the next parse. CDATA sections are written as text; comments, processing
///         instructions and entity references are left out. Does not recurse.
AC_API UTF16String ConvertDomToXMLString(const xercesc::DOMDocument* document);

}  // namespace Ridge::XMLUtilities
