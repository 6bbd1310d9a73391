#include "assetconnector/codec/RootScalars.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/ValueForms.h"

#include <utility>

namespace AC {

using namespace Vocabulary;

namespace {

void ReadIdentifier(const ElementReader& root, Name element, ferrite::utility::Guid& target)
{
    const UTF16String id = root.ChildAttribute(element, kID);
    if (!id.empty())
        target = GuidOf(id);
}

/// A missing element counts as false.
std::int32_t ReadFlag(const ElementReader& root, Name element)
{
    bool flag = false;
    root.GetChildFlag(element, flag);
    return flag ? kACMessage_True : kACMessage_False;
}

/// Sets an option to 1 when the element says "Overwrite".
void ReadOverwrite(const ElementReader& root, Name element, std::int32_t& option)
{
    if (EqualsIgnoringCase(root.ChildText(element), u"Overwrite"))
        option = 1;
}

}  // namespace

void ReadHeader(const ElementReader& root, ACMessage& message)
{
    UTF16String browserID = root.ChildAttribute(kBrowserID, kID);
    if (!browserID.empty())
        message.header.browserID = std::move(browserID);
    ReadIdentifier(root, kMsgID, message.header.msgID);
    ReadIdentifier(root, kTaskID, message.header.taskID);
}

void EncodeHeader(const ACMessage& message, const ElementWriter& root)
{
    root.Attribute(kBrowserID, kID, message.header.browserID);
    root.Guid(kMsgID, message.header.msgID);
    root.Guid(kTaskID, message.header.taskID);
}

void ReadLocalFileFlags(const ElementReader& root, ACMessage& message)
{
    message.mediaUseLocalFile = ReadFlag(root, kMediaUseLocalFile);
    message.roughCutUseLocalFile = ReadFlag(root, kRoughCutUseLocalFile);
}

void ReadScalars(const ElementReader& root, ACMessage& message)
{
    GetAttributeText(root.FindChildElement(kFilePath), kPath, message.filePath);
    root.GetChildText(kErrorInfo, message.errorInfo);
    root.GetChildText(kFileContent, message.fileContent);
    message.deleteOnDisk = ReadFlag(root, kDeleteOnDisk);
    root.GetChildText(kResult, message.result);
    ReadIdentifier(root, kTaskItemID, message.taskItemID);
    ReadIdentifier(root, kBatchID, message.batchID);
    root.GetChildInt(kPercentage, message.percentage);
    message.allowExit = ReadFlag(root, kAllowExit);
    ReadOverwrite(root, kTransferOption, message.transferOption);
    message.transferType = EqualsIgnoringCase(root.ChildText(kTransferType), u"ftp") ? 1 : 0;
    GetAttributeText(root.FindChildElement(kTargetBin), kID, message.targetBin);
    root.GetChildText(kPresetPath, message.presetPath);
    GetAttributeText(root.FindChildElement(kOutputDirectory), kPath, message.outputDirectory);
    root.GetChildText(kOutputFileName, message.outputFileName);
    message.outputXMP = true;
    root.GetChildBool(kOutputXMP, message.outputXMP);
    ReadOverwrite(root, kTagTemplateOption, message.tagTemplateOption);
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

}  // namespace AC
