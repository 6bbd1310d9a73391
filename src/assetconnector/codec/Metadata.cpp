#include "assetconnector/codec/Metadata.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/message/ResultNames.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace AC {

using namespace Vocabulary;

namespace {

boost::shared_ptr<Ridge::NamespaceMetadata> ReadNamespace(const DOMElement* element)
{
    auto metadata = boost::make_shared<Ridge::NamespaceMetadata>();
    metadata->URI = AttributeText(element, kURI);
    metadata->prefix = AttributeText(element, kPrefix);
    ForEachElement(element, [&metadata](const DOMElement* property) {
        // The first element of a name counts.
        const auto [entry, isFirst] = metadata->properties.try_emplace(property->getNodeName());
        const XMLCh* const value = isFirst ? ValueOf(property) : nullptr;
        if (value != nullptr)
            entry->second = value;
    });
    return metadata;
}

void EncodeNamespace(const Ridge::NamespaceMetadata& metadata, const ElementWriter& block)
{
    const ElementWriter element = block.AppendChildElement(kNamespace);
    element.SetAttribute(kURI, metadata.URI);
    element.SetAttribute(kPrefix, metadata.prefix);
    for (const auto& [name, value] : metadata.properties)
        element.AppendChildElement(name, value);
}

}  // namespace

void ReadCustomMetadata(const DOMElement* section, ACMessage& message)
{
    const DOMElement* const block = FindChildElement(section, kMinimumMetadata);
    if (block == nullptr)
        return;
    Ridge::MinimumMetadata& metadata = message.customMetadata.minimumMetadata;
    ForEachItem(block, kNamespace, [&metadata](const DOMElement* element) {
        metadata.namespaces.push_back(ReadNamespace(element));
    });
    ForEachItem(FindChildElement(block, kKeywords), kKeyword, [&metadata](const DOMElement* keyword) {
        if (const XMLCh* const value = ValueOf(keyword))
            metadata.keywords.insert(value);
    });
    const ElementReader reader(block);
    reader.GetChildBool(kStoreEmptyInfo, metadata.storeEmptyInfo);
    reader.GetChildBool(kApplyToAllDestinations, metadata.applyToAllDestinations);
}

void EncodeCustomMetadata(const ACMessage& message, const ElementWriter& root)
{
    const Ridge::MinimumMetadata& metadata = message.customMetadata.minimumMetadata;
    if (metadata.namespaces.empty() && metadata.keywords.empty())
        return;
    const ElementWriter block = root.AppendChildElement(kCustomMetadata).AppendChildElement(kMinimumMetadata);
    for (const auto& entry : metadata.namespaces)
        if (entry)
            EncodeNamespace(*entry, block);
    if (!metadata.keywords.empty()) {
        const ElementWriter keywords = block.AppendChildElement(kKeywords);
        for (const UTF16String& keyword : metadata.keywords)
            keywords.Text(kKeyword, keyword);
    }
    block.Boolean(kStoreEmptyInfo, metadata.storeEmptyInfo);
    block.Boolean(kApplyToAllDestinations, metadata.applyToAllDestinations);
}

void ReadTagTemplateInfoList(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kTagTemplateInfo, [&message](const DOMElement* item) {
        const ElementReader reader(item);
        auto info = boost::make_shared<Ridge::TagTemplateMessageInfo>();
        info->tagTemplateInfoID = reader.ChildText(kTagTemplateInfoID);
        info->tagTemplateInfoContent = reader.ChildText(kTagTemplateInfoContent);
        message.tagTemplateInfoList.push_back(std::move(info));
    });
}

void EncodeTagTemplateResultList(const ACMessage& message, const ElementWriter& root)
{
    EncodeItems(message.tagTemplateResultList, root, kTagTemplateResultList, kTagTemplateResult,
                [](const TagTemplateResult& result, const ElementWriter& item) {
                    item.Text(kTagTemplateInfoID, result.tagTemplateInfoID);
                    item.Text(kResult, ResultName(result.result));
                });
}

}  // namespace AC
