// Bare Xerces: the parse alone, with default settings; a DOM built from assets, and its serializer.

#include "bench/Codec.h"
#include "codec/ValueForms.h"
#include "host/ferrite/ReservedCharacters.h"
#include "host/ridge/AssetItem.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace Bench {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;

Operation Parse(const Work& work)
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

DOMElement* Append(DOMDocument* document, DOMElement* parent, const char16_t* name)
{
    DOMElement* const element = document->createElement(name);
    parent->appendChild(element);
    return element;
}

void AppendText(DOMDocument* document, DOMElement* parent, const char16_t* name, const UTF16String& text)
{
    Append(document, parent, name)->appendChild(document->createTextNode(text.c_str()));
}

void AppendAsset(DOMDocument* document, DOMElement* list, const Ridge::AssetItem& asset, int order)
{
    DOMElement* const item = Append(document, list, u"assetItem");
    item->setAttribute(u"order", AC::DecimalText(order).c_str());
    Append(document, item, u"filePath")->setAttribute(u"path", asset.GetMediaPath().c_str());
    const auto appendGuid = [&](const char16_t* name, const ferrite::utility::Guid& guid) {
        Append(document, item, name)->setAttribute(u"ID", guid.AsString().c_str());
    };
    appendGuid(u"mediaInfoID", asset.GetAssetMediaInfoGUID());
    appendGuid(u"parentAssetID", asset.GetParentGUID());
    appendGuid(u"assetID", asset.GetAssetGUID());
    AppendText(document, item, u"startTime", AC::DecimalText(asset.GetInPoint().ticks));
    AppendText(document, item, u"duration", AC::DecimalText(asset.GetDuration().ticks));
    AppendText(document, item, u"frameRate", u"f254016000000");
    AppendText(document, item, u"name", asset.GetAssetName());
    AppendText(document, item, u"type", AC::ClipTypeName(asset.GetAssetMediaType()));
    UTF16String metadata;
    ferrite::xml::utils::EncodeReservedCharacters(asset.GetAssetMetadata(), metadata);
    AppendText(document, item, u"assetMetadata", metadata);
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

const AddedCodec kXerces({"xerces", {Parse, true, true}, {Serialize}});

}  // namespace
}  // namespace Bench
