#include "assetconnector/codec/ACMessageDecoder.h"

#include "assetconnector/codec/AssetItems.h"
#include "assetconnector/codec/AssetMediaInfos.h"
#include "assetconnector/codec/DynamicColumns.h"
#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/Metadata.h"
#include "assetconnector/codec/RootScalars.h"
#include "assetconnector/codec/SingleAssets.h"
#include "assetconnector/codec/TasksAndResults.h"
#include "assetconnector/codec/Transfers.h"
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
    ReadHeader(root, message);
    ReadLocalFileFlags(root, message);  // before the asset lists, whose readers go by them
    for (const Section& section : kSections)
        if (const DOMElement* const found = root.FindChildElement(section.element))
            section.read(found, message);
    ReadScalars(root, message);
    return true;
}

}  // namespace AC
