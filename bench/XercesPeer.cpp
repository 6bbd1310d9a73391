// Bare Xerces: the parse alone, with default settings; a DOM built from assets, and its serializer.

#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "bench/Codec.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace Bench {

using xercesc::DOMDocument;
using xercesc::DOMElement;

Operation BareParse(const Work& work)
{
    return [&text = work.utf16] {
        xercesc::XercesDOMParser parser;
        xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()),
                                          text.size() * sizeof(char16_t), "text");
        source.setEncoding(xercesc::XMLUni::fgXMLChEncodingString);
        parser.parse(source);
        benchmark::DoNotOptimize(parser.getDocument());
    };
}

namespace {

DOMElement* Append(DOMDocument* document, DOMElement* parent, const char16_t* name)
{
    DOMElement* const element = document->createElement(name);
    parent->appendChild(element);
    return element;
}

struct FieldName
{
    UTF16String element;
    UTF16String attribute;
};

std::vector<FieldName> FieldNames()
{
    using ferrite::utility::UTF8to16;
    std::vector<FieldName> names;
    for (const AssetField& field : kAssetFields)
        names.push_back(
            {UTF8to16(field.element), UTF8to16(field.attribute == nullptr ? "" : field.attribute)});
    return names;
}

void AppendAsset(DOMDocument* document, DOMElement* list, const Ridge::AssetItem& asset, int order)
{
    static const std::vector<FieldName> names = FieldNames();
    DOMElement* const item = Append(document, list, u"assetItem");
    item->setAttribute(u"order", AC::Decimal(order).Text());
    const PlainAsset<UTF16String> texts = PlainAssetOf(asset);
    for (std::size_t i = 0; i < names.size(); ++i) {
        DOMElement* const element = Append(document, item, names[i].element.c_str());
        if (names[i].attribute.empty())
            element->appendChild(document->createTextNode(texts[i].c_str()));
        else
            element->setAttribute(names[i].attribute.c_str(), texts[i].c_str());
    }
}

Operation Serialize(const Work& work)
{
    return [&record = work.record] {
        xercesc::DOMImplementation* const implementation =
            xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
        DOMDocument* const document = implementation->createDocument(nullptr, u"hostNotification", nullptr);
        DOMElement* const list = Append(document, document->getDocumentElement(), u"assetItemList");
        int order = 0;
        for (const auto& asset : record.assetItemList)
            AppendAsset(document, list, *asset, ++order);

        xercesc::DOMLSSerializer* const serializer = implementation->createLSSerializer();
        XMLCh* text = serializer->writeToString(document);
        const UTF16String result(text);
        benchmark::DoNotOptimize(result.data());
        xercesc::XMLString::release(&text);
        serializer->release();
        document->release();
    };
}

const AddedCodec kXerces({"xerces", {BareParse, true, true}, {Serialize}});

}  // namespace
}  // namespace Bench
