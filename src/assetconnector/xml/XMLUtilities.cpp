#include "assetconnector/xml/XMLUtilities.h"

#include "assetconnector/host/XMLPlatform.h"
#include "assetconnector/xml/TextWriter.h"

namespace Ridge::XMLUtilities {

bool GetDOMDocument(AC::MessageParser& parser, const UTF16String& text, xercesc::DOMDocument*& document)
{
    xercesc::DOMDocument* const parsed = parser.Parse(text);
    if (parsed != nullptr)
        document = parsed;
    return parsed != nullptr;
}

bool GetDOMDocument(AC::MessageParser& parser, const UTF16String& text, xercesc::DOMDocument*& document,
                    AC::ParseError& error)
{
    const bool parsed = GetDOMDocument(parser, text, document);
    if (!parsed)
        error = parser.Error();
    return parsed;
}

xercesc::DOMDocument* CreateDomDocument()
{
    AC::XMLPlatform::Require();
    static const XMLCh kCore[] = u"Core";
    return xercesc::DOMImplementationRegistry::getDOMImplementation(kCore)->createDocument();
}

UTF16String ConvertDomToXMLString(const xercesc::DOMDocument* document)
{
    return AC::WriteText(document, AC::Reserved::kAsReferences).TakeUTF16();
}

}  // namespace Ridge::XMLUtilities
