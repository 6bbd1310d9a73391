#include "assetconnector/codec/ACMessageDecoder.h"

#include "assetconnector/codec/Assets.h"
#include "assetconnector/codec/DynamicColumns.h"
#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/Metadata.h"
#include "assetconnector/codec/TasksAndResults.h"
#include "assetconnector/codec/Transfers.h"
#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/xml/XMLUtilities.h"

namespace AC {
namespace {

using namespace Vocabulary;

struct Section
{
    Name element;
    void (*read)(const DOMElement* section, ACMessage& message);
};

/// The lists and blocks, in the order in which they are read.
constexpr Section kSections[] = {
    {kAssetMediaInfoList, ReadAssetMediaInfoList},
    {kAssetItemList, ReadAssetItemList},
    {kIngestItemList, ReadIngestItemList},
    {kFileList, ReadFileList},
    {kThumbnailRequest, ReadThumbnailRequest},
    {kTaskIDList, ReadTaskIDList},
    {kCommandList, ReadCommandList},
    {kActionResultList, ReadActionResultList},
    {kFileInfoList, ReadFileInfoList},
    {kCustomMetadata, ReadCustomMetadata},
    {kEvent, ReadEvent},
    {kTransferItemList, ReadTransferItemList},
    {kFtpSetting, ReadFtpSetting},
    {kTranscodeItemList, ReadTranscodeItemList},
    {kConcatenationItemList, ReadConcatenationItemList},
    {kRenameItemList, ReadRenameItemList},
    {kIngestMediaItemList, ReadIngestMediaItemList},
    {kMediaPropertyInfo, ReadMediaPropertyInfo},
    {kNewDynamicColumns, ReadNewDynamicColumns},
    {kDeleteDynamicColumns, ReadDeleteDynamicColumns},
    {kDynamicColumnFieldValues, ReadDynamicColumnFieldValues},
    {kTagTemplateInfoList, ReadTagTemplateInfoList},
};

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

void ReadHeader(const ElementReader& root, ACMessageHeader& header)
{
    UTF16String browserID = root.ChildAttribute(kBrowserID, kID);
    if (!browserID.empty())
        header.browserID = std::move(browserID);
    ReadIdentifier(root, kMsgID, header.msgID);
    ReadIdentifier(root, kTaskID, header.taskID);
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

}  // namespace

bool ACMessageDecoder::DecodeXMLString(const UTF16String& xml, ACMessage& message)
{
    ParseError ignored;
    return DecodeXMLString(xml, message, ignored);
}

bool ACMessageDecoder::DecodeXMLString(const UTF16String& xml, ACMessage& message, ParseError& error)
{
    MessageParser parser;  // owns the document
    xercesc::DOMDocument* document = nullptr;
    if (!Ridge::XMLUtilities::GetDOMDocument(parser, xml, document, error))
        return false;
    const DOMElement* const element = document->getDocumentElement();
    if (element == nullptr)
        return false;

    const ElementReader root(element);
    ReadHeader(root, message.header);
    // Before the asset lists, whose readers go by them.
    message.mediaUseLocalFile = ReadFlag(root, kMediaUseLocalFile);
    message.roughCutUseLocalFile = ReadFlag(root, kRoughCutUseLocalFile);
    for (const Section& section : kSections)
        if (const DOMElement* const found = root.FindChildElement(section.element))
            section.read(found, message);
    ReadScalars(root, message);
    return true;
}

}  // namespace AC
