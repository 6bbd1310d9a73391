#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/xml/ParseObserver.h"

#include <xercesc/parsers/XercesDOMParser.hpp>

#include <cstddef>
#include <memory>

namespace AC {

class NameLimits;
class TextPlaces;

/// Where and why a text does not parse. Line and column count from 1; 0 where no place is known.
struct ParseError
{
    std::size_t line = 0;
    std::size_t column = 0;
    UTF16String reason;
};

/// The parser of panel texts. Texts come from web pages and are not trusted: there is no validation, no
/// schema, no namespace processing and no access to anything outside the text; a DOCTYPE ends the parse, and
/// with it every entity but the five named ones. Comments and processing instructions make no nodes and do
/// not split a text; a CDATA section is a node of its own.
///
/// Character data between two tags reaches the tree as one piece: the base class appends piece by piece, one
/// for every reference, and each piece searches all the buffers that earlier ones released.
///
/// What a text may hold at most stands in MessageLimits.h. One parser, one text, one thread. It owns the
/// document.
class AC_API_PARTS MessageParser final : public xercesc::XercesDOMParser
{
public:
    /// \throws std::logic_error before the XML platform is initialised; xercesc::OutOfMemoryException.
    AC_API MessageParser();
    AC_API ~MessageParser() override;

    /// Parses the text, whatever encoding it declares; a leading byte order mark is accepted.
    /// \param observer Is told of each element; may be null, and is not needed afterwards.
    /// \return The document, owned by this parser; null when the text does not parse.
    /// \throws xercesc::OutOfMemoryException, std::bad_alloc, what the observer throws.
    AC_API xercesc::DOMDocument* Parse(const UTF16String& text, ParseObserver* observer = nullptr);

    /// \return What was wrong with the text, after Parse returned null. Of a text that mentions a password,
    ///         or holds an address with one, the reason quotes nothing.
    const ParseError& Error() const noexcept { return mError; }

private:
    /// Parse behind the byte order mark.
    AC_LOCAL xercesc::DOMDocument* ParseContent(std::u16string_view content);

    AC_LOCAL void docCharacters(const XMLCh* chars, XMLSize_t length, bool cdataSection) override;
    AC_LOCAL void docPI(const XMLCh* target, const XMLCh* data) override;
    AC_LOCAL void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriID,
                               const XMLCh* prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                               XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
    AC_LOCAL void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriID, bool isRoot,
                             const XMLCh* prefix) override;
    AC_LOCAL void doctypeDecl(const xercesc::DTDElementDecl& declaration, const XMLCh* publicID,
                              const XMLCh* systemID, bool hasInternalSubset, bool hasExternalSubset) override;
    AC_LOCAL void XMLDecl(const XMLCh* version, const XMLCh* encoding, const XMLCh* standalone,
                          const XMLCh* actualEncoding) override;
    AC_LOCAL void error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes type,
                        const XMLCh* text, const XMLCh* systemID, const XMLCh* publicID, XMLFileLoc line,
                        XMLFileLoc column) override;

    /// Makes a text of the collected run of character data.
    AC_LOCAL void EndRun();

    /// Appends to the element that is open.
    AC_LOCAL void Append(xercesc::DOMNode* child);

    [[noreturn]] AC_LOCAL void Refuse(const char16_t* reason);

    UTF16String mRun;
    std::size_t mDepth = 0;
    std::unique_ptr<NameLimits> mNames;
    ParseObserver* mObserver = nullptr;
    std::unique_ptr<TextPlaces> mPlaces;  // while there is an observer
    ParseError mError;
};

}  // namespace AC
