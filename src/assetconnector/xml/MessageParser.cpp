#include "assetconnector/xml/MessageParser.h"

#include "assetconnector/host/XMLPlatform.h"
#include "assetconnector/xml/DomLinks.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <string_view>

namespace AC {

namespace {

/// Ends a parse from inside a callback; the scanner lets it through.
struct Refusal
{
};

/// \return What the base class takes its memory from. \throws std::logic_error before there is any.
xercesc::MemoryManager* PlatformMemory()
{
    AC::XMLPlatform::Require();
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

ParseError PlaceOf(std::u16string_view text, std::size_t at, const char16_t* reason)
{
    const std::u16string_view before = text.substr(0, at);
    const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), u'\n')) + 1;
    return {line, at - before.rfind(u'\n'), reason};  // without a line feed rfind gives -1
}

/// A unit that is no character and that the scanner would let pass: a zero is the end of the text to it when
/// it stands behind the root, and half a pair a part of an attribute's value when it ends one.
bool IsStray(std::u16string_view text, std::size_t at)
{
    const auto isLead = [](char16_t unit) { return (unit & 0xFC00U) == 0xD800U; };
    const auto isTrail = [](char16_t unit) { return (unit & 0xFC00U) == 0xDC00U; };
    return text[at] == 0 || (isLead(text[at]) && (at + 1 == text.size() || !isTrail(text[at + 1])));
}

/// \return Where the first of them stands; npos without one.
std::size_t FindStray(std::u16string_view text)
{
    bool isSuspect = false;
    for (const char16_t unit : text)  // without an early end, and so several units at a time
        isSuspect |= unit == 0 || (unit & 0xF800U) == 0xD800U;
    if (isSuspect)
        for (std::size_t at = 0; at < text.size(); ++at)
            if (IsStray(text, at))
                return at;
    return std::u16string_view::npos;
}

/// \return The XML library's reason without what it quotes of the text.
UTF16String WithoutQuotes(std::u16string_view reason)
{
    UTF16String masked;
    bool isQuoted = false;
    for (const char16_t unit : reason) {
        if (unit == u'\'') {
            isQuoted = !isQuoted;
            masked += isQuoted ? u"'***'" : u"";
        } else if (!isQuoted) {
            masked += unit;
        }
    }
    return masked;
}

}  // namespace

MessageParser::MessageParser() : XercesDOMParser(nullptr, PlatformMemory())
{
    setValidationScheme(Val_Never);
    setDoNamespaces(false);
    setDoSchema(false);
    setLoadSchema(false);
    setLoadExternalDTD(false);
    setSkipDTDValidation(true);
    setDisableDefaultEntityResolution(true);
    setCreateEntityReferenceNodes(false);
    setCreateCommentNodes(false);
    setExitOnFirstFatalError(true);
    getScanner()->setErrorReporter(this);
}

MessageParser::~MessageParser() = default;

xercesc::DOMDocument* MessageParser::Parse(const UTF16String& text)
{
    std::u16string_view content = text;
    if (!content.empty() && content.front() == 0xFEFF)
        content.remove_prefix(1);
    mRun.clear();
    mDepth = 0;
    mElementNames.clear();
    mAttributeNames.clear();
    mNamesOfHash.fill(0);
    mError = {};
    xercesc::DOMDocument* const document = ParseContent(content);
    if (content.find_first_not_of(u" \t\r\n") == std::u16string_view::npos)
        mError.reason = u"the text is empty";
    // Where a quote or an ampersand was not escaped, a piece of a password may pass for a name.
    if (document == nullptr && content.find(u"ftpPassword") != std::u16string_view::npos)
        mError.reason = WithoutQuotes(mError.reason);
    return document;
}

xercesc::DOMDocument* MessageParser::ParseContent(std::u16string_view content)
{
    if (const std::size_t stray = FindStray(content); stray != std::u16string_view::npos) {
        mError = PlaceOf(content, stray,
                         content[stray] == 0 ? u"a zero character is not accepted"
                                             : u"half a surrogate pair is not accepted");
        return nullptr;
    }
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(content.data()),
                                      content.size() * sizeof(char16_t), "panel text");
    source.setEncoding(xercesc::XMLUni::fgXMLChEncodingString);
    try {
        parse(source);
    } catch (const Refusal&) {
        return nullptr;
    } catch (const xercesc::XMLException& exception) {
        mError = {0, 0, exception.getMessage()};
        return nullptr;
    } catch (const xercesc::DOMException& exception) {
        mError = {0, 0, exception.getMessage()};
        return nullptr;
    }
    // After a fatal error the tree so far is still there.
    return getErrorCount() == 0 ? getDocument() : nullptr;
}

void MessageParser::docCharacters(const XMLCh* chars, XMLSize_t length, bool cdataSection)
{
    if (!fWithinElement)
        return;
    if (!cdataSection) {
        mRun.append(chars, length);
        return;
    }
    EndRun();
    Append(createCDATASection(chars, length));
}

void MessageParser::Append(xercesc::DOMNode* child)
{
    DomLinks::AppendChild(static_cast<xercesc::DOMElement*>(fCurrentParent), child);
}

void MessageParser::CountElement(const xercesc::XMLElementDecl& declaration)
{
    if (mElementNames.insert(&declaration).second)
        CountName(declaration.getFullName());
}

void MessageParser::CountAttribute(const XMLCh* name)
{
    const std::u16string_view text(name);
    if (mAttributeNames.find(text) != mAttributeNames.end())
        return;
    mAttributeNames.emplace(text);
    CountName(name);
}

void MessageParser::CountName(const XMLCh* name)
{
    const std::size_t ofHash = ++mNamesOfHash[xercesc::XMLString::hash(name, mNamesOfHash.size())];
    if (mElementNames.size() + mAttributeNames.size() > kMostNames || ofHash > kMostNamesOfHash)
        Refuse(u"there are too many different names");
}

void MessageParser::EndRun()
{
    if (mRun.empty())
        return;
    Append(createText(mRun.data(), mRun.size()));
    mRun.clear();
}

void MessageParser::docPI(const XMLCh* /*target*/, const XMLCh* /*data*/) {}

void MessageParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriID,
                                 const XMLCh* prefix,
                                 const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                 XMLSize_t attributeCount, bool isEmpty, bool isRoot)
{
    EndRun();
    if (mDepth == kDeepestElement)
        Refuse(u"elements are nested too deeply");
    ++mDepth;
    CountElement(declaration);
    xercesc::DOMElement* const element = createElement(declaration.getFullName());
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
        const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
        CountAttribute(attribute.getName());
        DomLinks::AddAttribute(element, createAttr(attribute.getName()), attribute.getValue(),
                               attributeCount);
    }
    if (fWithinElement)
        Append(element);
    else
        getDocument()->appendChild(element);
    fCurrentParent = element;
    fWithinElement = true;
    if (isEmpty)
        endElement(declaration, uriID, isRoot, prefix);
}

void MessageParser::endElement(const xercesc::XMLElementDecl& /*declaration*/, unsigned int /*uriID*/,
                               bool isRoot, const XMLCh* /*prefix*/)
{
    EndRun();
    fCurrentParent = DomLinks::ParentOf(static_cast<xercesc::DOMElement*>(fCurrentParent));
    fWithinElement = !isRoot;
    --mDepth;
}

void MessageParser::doctypeDecl(const xercesc::DTDElementDecl& /*declaration*/, const XMLCh* /*publicID*/,
                                const XMLCh* /*systemID*/, bool /*hasInternalSubset*/,
                                bool /*hasExternalSubset*/)
{
    Refuse(u"a DOCTYPE is not accepted");
}

void MessageParser::Refuse(const char16_t* reason)
{
    const xercesc::Locator* const place = getScanner()->getLocator();
    mError = {place->getLineNumber(), place->getColumnNumber(), reason};
    throw Refusal();
}

void MessageParser::XMLDecl(const XMLCh* version, const XMLCh* encoding, const XMLCh* standalone,
                            const XMLCh* actualEncoding)
{
    try {
        XercesDOMParser::XMLDecl(version, encoding, standalone, actualEncoding);
    } catch (const xercesc::DOMException&) {
        Refuse(u"the XML version is not supported");
    }
}

void MessageParser::error(unsigned int /*code*/, const XMLCh* /*domain*/,
                          xercesc::XMLErrorReporter::ErrTypes type, const XMLCh* text,
                          const XMLCh* /*systemID*/, const XMLCh* /*publicID*/, XMLFileLoc line,
                          XMLFileLoc column)
{
    if (type == xercesc::XMLErrorReporter::ErrType_Warning || !mError.reason.empty())
        return;
    mError = {line, column, text};
}

}  // namespace AC
