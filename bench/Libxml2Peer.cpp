// The tree of libxml2: parsed, and built from plain structs and written.

#include "bench/Codec.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <stdexcept>

namespace Bench {
namespace {

const xmlChar* X(const char* text)
{
    return reinterpret_cast<const xmlChar*>(text);
}

Operation Parse(const Work& work)
{
    return [&text = work.utf8] {
        const xmlDocPtr document = xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                                 XML_PARSE_NONET | XML_PARSE_HUGE);
        if (document == nullptr)
            throw std::runtime_error("libxml2 did not parse the text");
        xmlFreeDoc(document);
    };
}

void Append(xmlNodePtr parent, const char* name, const std::string& text)
{
    xmlNewTextChild(parent, nullptr, X(name), X(text.c_str()));
}

void AppendWithAttribute(xmlNodePtr parent, const char* name, const char* attribute, const std::string& value)
{
    xmlNewProp(xmlNewChild(parent, nullptr, X(name), nullptr), X(attribute), X(value.c_str()));
}

void AppendAsset(xmlNodePtr list, const PlainAsset& asset)
{
    const xmlNodePtr item = xmlNewChild(list, nullptr, X("assetItem"), nullptr);
    xmlNewProp(item, X("order"), X(std::to_string(asset.order).c_str()));
    AppendWithAttribute(item, "filePath", "path", asset.filePath);
    AppendWithAttribute(item, "mediaInfoID", "ID", asset.mediaInfoID);
    AppendWithAttribute(item, "parentAssetID", "ID", asset.parentAssetID);
    AppendWithAttribute(item, "assetID", "ID", asset.assetID);
    Append(item, "startTime", std::to_string(asset.startTime));
    Append(item, "duration", std::to_string(asset.duration));
    Append(item, "frameRate", asset.frameRate);
    Append(item, "name", asset.name);
    Append(item, "type", asset.type);
    Append(item, "assetMetadata", asset.metadata);
}

Operation Write(const Work& work)
{
    return [assets = PlainAssets(work)] {
        const xmlDocPtr document = xmlNewDoc(X("1.0"));
        const xmlNodePtr root = xmlNewNode(nullptr, X("hostNotification"));
        xmlDocSetRootElement(document, root);
        const xmlNodePtr list = xmlNewChild(root, nullptr, X("assetItemList"), nullptr);
        for (const PlainAsset& asset : assets)
            AppendAsset(list, asset);
        xmlChar* text = nullptr;
        int size = 0;
        xmlDocDumpMemory(document, &text, &size);
        benchmark::DoNotOptimize(text);
        xmlFree(text);
        xmlFreeDoc(document);
    };
}

const AddedCodec kLibxml2({"libxml2", {Parse, true}, {Write}});

}  // namespace
}  // namespace Bench
