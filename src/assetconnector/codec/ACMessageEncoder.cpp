#include "assetconnector/codec/ACMessageEncoder.h"

#include "assetconnector/codec/Assets.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/Metadata.h"
#include "assetconnector/codec/TasksAndResults.h"
#include "assetconnector/codec/Transfers.h"
#include "assetconnector/xml/DomWriter.h"
#include "assetconnector/xml/XMLUtilities.h"

#include <memory>

namespace AC {
namespace {

using namespace Vocabulary;

void EncodeHeader(const ACMessage& message, const ElementWriter& root)
{
    root.Attribute(kBrowserID, kID, message.header.browserID);
    root.Guid(kMsgID, message.header.msgID);
    root.Guid(kTaskID, message.header.taskID);
}

void EncodeScalars(const ACMessage& message, const ElementWriter& root)
{
    root.Attribute(kFilePath, kPath, message.filePath);
    root.Text(kClipFormat, message.clipFormat);
    root.NonZeroGuid(kTaskItemID, message.taskItemID);
    root.NonZeroGuid(kBatchID, message.batchID);
    root.Text(kErrorInfo, message.errorInfo);
    root.Text(kFileContent, message.fileContent);
    root.TriState(kDeleteOnDisk, message.deleteOnDisk);
    root.TriState(kMediaUseLocalFile, message.mediaUseLocalFile);
    root.TriState(kRoughCutUseLocalFile, message.roughCutUseLocalFile);
    root.Text(kResult, message.result);
    if (message.percentage != kACMessage_Undefine)
        root.Integer(kPercentage, message.percentage);
    root.TriState(kAllowExit, message.allowExit);
    root.Attribute(kHost, kID, message.host);
    root.Attribute(kTargetBin, kID, message.targetBin);
    root.Attribute(kOutputFilePath, kPath, message.outputFilePath);
    root.Text(kCurrentWorkMode, message.currentWorkMode);
    root.TriState(kInstalled, message.installed);
}

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

/// \return The text, yet to be put together: its document is released before, as WriteDom advises.
UTF8Builder Write(const ACMessage& message, const UTF16String& rootName, Reserved reserved)
{
    const std::unique_ptr<xercesc::DOMDocument, ReleaseDocument> document(
        Ridge::XMLUtilities::CreateDomDocument());
    const ElementWriter root = ElementWriter::CreateRoot(*document, rootName);
    for (const auto encodeSection : kSections)
        encodeSection(message, root);
    return WriteDom(document.get(), reserved);
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
