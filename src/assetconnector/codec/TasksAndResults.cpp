#include "assetconnector/codec/TasksAndResults.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/LibraryMetadata.h"
#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/loft/Utilities.h"
#include "assetconnector/message/ResultNames.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace AC {

using namespace Vocabulary;

void ReadFileList(const DOMElement* section, ACMessage& message)
{
    ForEachAttribute(section, kFilePath, kPath,
                     [&message](UTF16String path) { message.fileList.push_back(std::move(path)); });
}

void EncodeFileList(const ACMessage& message, const ElementWriter& root)
{
    EncodeAttributes(message.fileList, root, kFileList, kFilePath, kPath,
                     Loft::Utilities::NormalizePathWithoutUNC);
}

void ReadTaskIDList(const DOMElement* section, ACMessage& message)
{
    ForEachAttribute(section, kTaskID, kID,
                     [&message](const UTF16String& id) { message.taskIDList.push_back(GuidOf(id)); });
}

void EncodeTaskIDList(const ACMessage& message, const ElementWriter& root)
{
    EncodeAttributes(message.taskIDList, root, kTaskIDList, kTaskID, kID,
                     [](const ferrite::utility::Guid& id) { return id.AsString(); });
}

void ReadCommandList(const DOMElement* section, ACMessage& message)
{
    ForEachAttribute(section, kCommand, kID,
                     [&message](UTF16String command) { message.commandList.push_back(std::move(command)); });
}

void EncodeCommandList(const ACMessage& message, const ElementWriter& root)
{
    EncodeAttributes(message.commandList, root, kCommandList, kCommand, kID, AsIs);
}

void ReadActionResultList(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kActionResult, [&message](const DOMElement* item) {
        const ElementReader reader(item);
        LibraryMetadata times = ReadLibraryMetadata(reader);
        auto result = boost::make_shared<Ridge::ActionResult>();
        result->assetID = GuidOf(reader.ChildAttribute(kAssetID, kID));
        result->filePath = reader.ChildAttribute(kFilePath, kPath);
        result->result = reader.ChildText(kResult) == kACMessage_ResultOK ? 0 : Ridge::kFailure;
        result->errorMessage = reader.ChildText(kErrorMessage);
        result->fileCreationTime = std::move(times.creationTime);
        result->fileLastModificationTime = std::move(times.modificationTime);
        message.actionResultList.push_back(std::move(result));
    });
}

void EncodeActionResultList(const ACMessage& message, const ElementWriter& root)
{
    EncodeItems(message.actionResultList, root, kActionResultList, kActionResult,
                [](const Ridge::ActionResult& result, const ElementWriter& item) {
                    item.Guid(kAssetID, result.assetID);
                    item.Attribute(kFilePath, kPath, result.filePath);
                    item.Text(kResult, ResultName(result.result));
                    item.Text(kErrorMessage, result.errorMessage);
                    EncodeLibraryMetadata({result.fileCreationTime, result.fileLastModificationTime}, item);
                });
}

void EncodeTransferResultList(const ACMessage& message, const ElementWriter& root)
{
    EncodeItems(message.transferResultList, root, kActionResultList, kActionResult,
                [](const Ridge::TransferResult& result, const ElementWriter& item) {
                    item.Attribute(kSrc, kPath, result.src);
                    item.Attribute(kDst, kPath, result.dst);
                    item.Text(kResult, ResultName(result.result));
                    item.Text(kErrorMessage, result.errorMessage);
                });
}

void ReadFileInfoList(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kFileInfo, [&message](const DOMElement* item) {
        const ElementReader reader(item);
        auto info = boost::make_shared<Ridge::FileInfo>();
        info->assetID = GuidOf(reader.ChildAttribute(kAssetID, kID));
        info->filePath = reader.ChildAttribute(kFilePath, kPath);
        info->fileLastModificationTime = reader.ChildText(kFileLastModificationTime);
        message.fileInfoList.push_back(std::move(info));
    });
}

void ReadEvent(const DOMElement* section, ACMessage& message)
{
    const ElementReader reader(section);
    reader.GetChildText(kEventType, message.event.eventType);
    reader.GetChildText(kEventString, message.event.eventString);
    reader.GetChildBool(kShowMessage, message.event.showMessage);
}

void EncodeExportResultInfo(const ACMessage& message, const ElementWriter& root)
{
    const ExportResultInfo& info = message.exportResultInfo;
    if (info.projectFile.empty() || info.projectType.empty())
        return;
    const ElementWriter block = root.AppendChildElement(kExportResultInfo);
    block.Text(kProjectFile, info.projectFile);
    block.Text(kProjectType, info.projectType);
}

}  // namespace AC
