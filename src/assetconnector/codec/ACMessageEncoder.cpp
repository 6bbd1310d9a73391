#include "assetconnector/codec/ACMessageEncoder.h"

#include "assetconnector/codec/AssetItems.h"
#include "assetconnector/codec/AssetMediaInfos.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/Metadata.h"
#include "assetconnector/codec/RootScalars.h"
#include "assetconnector/codec/SingleAssets.h"
#include "assetconnector/codec/TasksAndResults.h"
#include "assetconnector/codec/Transfers.h"
#include "assetconnector/xml/TextWriter.h"
#include "assetconnector/xml/XMLUtilities.h"

#include <memory>

namespace AC {
namespace {

/// What appends to the root, in this order.
constexpr void (*kSections[])(const ACMessage& message, const ElementWriter& root) = {
    EncodeHeader,
    EncodeAssetMediaInfoList,
    EncodeAssetItemList,
    EncodeIngestItemList,
    EncodeFileList,
    EncodeThumbnailRequest,
    EncodeTaskIDList,
    EncodeActionResultList,
    EncodeTransferResultList,
    EncodeCommandList,
    EncodeCustomMetadata,
    EncodeSelectedItemInfoList,
    EncodeMediaPropertyInfo,
    EncodeExportResultInfo,
    EncodeTagTemplateResultList,
    EncodeMarkerInfoList,
    EncodeScalars,
};

struct ReleaseDocument
{
    void operator()(xercesc::DOMDocument* document) const { document->release(); }
};

/// \return The text, yet to be put together: its document is released before, as WriteText advises.
UTF8Builder Write(const ACMessage& message, const UTF16String& rootName, Reserved reserved)
{
    const std::unique_ptr<xercesc::DOMDocument, ReleaseDocument> document(
        Ridge::XMLUtilities::CreateDomDocument());
    const ElementWriter root = ElementWriter::CreateRoot(*document, rootName);
    for (const auto encodeSection : kSections)
        encodeSection(message, root);
    return WriteText(document.get(), reserved);
}

}  // namespace

UTF16String ACMessageEncoder::EncoderACMessage(const ACMessage& message, const UTF16String& rootName)
{
    return Write(message, rootName, Reserved::kAsReferences).TakeUTF16();
}

std::string ACMessageEncoder::EncodeUTF8(const ACMessage& message, const UTF16String& rootName)
{
    return Write(message, rootName, Reserved::kAsReferences).TakeUTF8();
}

std::string ACMessageEncoder::EncodeDecodedUTF8(const ACMessage& message, const UTF16String& rootName)
{
    return Write(message, rootName, Reserved::kBare).TakeUTF8();
}

}  // namespace AC
