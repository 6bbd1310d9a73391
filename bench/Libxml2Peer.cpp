// The tree of libxml2: parsed, and built from plain structs and written.

#include "bench/Codec.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

namespace Bench {
namespace {

const xmlChar* X(const std::string& text)
{
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

Operation Parse(const Work& work)
{
    return [&text = work.utf8] {
        xmlFreeDoc(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                 XML_PARSE_NONET | XML_PARSE_HUGE));
    };
}

Operation Write(const Work& work)
{
    return [assets = PlainAssetsOf(work)] {
        const xmlDocPtr document = xmlNewDoc(X("1.0"));
        xmlDocSetRootElement(document, xmlNewNode(nullptr, X("hostNotification")));
        const xmlNodePtr list =
            xmlNewChild(xmlDocGetRootElement(document), nullptr, X("assetItemList"), nullptr);
        int order = 0;
        for (const PlainAsset<std::string>& asset : assets) {
            const xmlNodePtr item = xmlNewChild(list, nullptr, X("assetItem"), nullptr);
            xmlNewProp(item, X("order"), X(std::to_string(++order)));
            auto value = asset.begin();
            for (const AssetField& field : kAssetFields)
                if (field.attribute != nullptr)
                    xmlNewProp(xmlNewChild(item, nullptr, X(field.element), nullptr), X(field.attribute),
                               X(*value++));
                else
                    xmlNewTextChild(item, nullptr, X(field.element), X(*value++));
        }
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
