#include "assetconnector/codec/Transfers.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/ItemOrder.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace AC {

using namespace Vocabulary;

void ReadIngestItemList(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kIngestItem, [&message](const DOMElement* item) {
        const ElementReader reader(item);
        auto ingestItem = boost::make_shared<Ridge::IngestItem>();
        ingestItem->filePath = reader.ChildAttribute(kFilePath, kPath);
        ingestItem->aliasName = reader.ChildText(kAliasName);
        message.ingestItemList.push_back(std::move(ingestItem));
    });
}

namespace {

void EncodeIngestItem(const Ridge::IngestItem& ingestItem, const ElementWriter& item)
{
    const bool hasStart = ingestItem.startTime != tempora::kTime_Invalid;
    item.Attribute(kFilePath, kPath, ingestItem.filePath);
    item.Text(kAliasName, ingestItem.aliasName);
    item.Text(kClipFormat, ingestItem.clipFormat);
    item.FrameRate(ingestItem.frameRate);
    if (hasStart)
        item.Frames(kStartTime, ingestItem.startTime, ingestItem.frameRate);
    if (ingestItem.endTime != tempora::kTime_Invalid)
        item.Frames(kItemDuration, hasStart ? ingestItem.endTime - ingestItem.startTime : ingestItem.endTime,
                    ingestItem.frameRate);
    EncodeAttributes(ingestItem.extraPathList, item, kExtraPathList, kExtraPath, kPath, AsIs);
}

/// Path, rate and times, which items of both conversions carry.
template <class Item>
boost::shared_ptr<Item> ReadConversionItem(const ElementReader& reader)
{
    auto item = boost::make_shared<Item>();
    item->filePath = reader.ChildAttribute(kFilePath, kPath);
    item->frameRate = reader.Multiplier();
    item->startTime = reader.ItemTime(kStartTime, item->frameRate);
    item->duration = reader.ItemTime(kItemDuration, item->frameRate);
    return item;
}

/// Replaces the setting when the child exists and its attribute is not empty.
void ReadSetting(const ElementReader& reader, Name child, Name attribute, UTF16String& setting)
{
    UTF16String value = reader.ChildAttribute(child, attribute);
    if (!value.empty())
        setting = std::move(value);
}

}  // namespace

void EncodeIngestItemList(const ACMessage& message, const ElementWriter& root)
{
    EncodeItems(message.ingestItemList, root, kIngestItemList, kIngestItem, EncodeIngestItem);
}

void ReadIngestMediaItemList(const DOMElement* section, ACMessage& message)
{
    IngestMediaSettings& settings = message.ingestMediaItemList;
    ForEachAttribute(section, kIngestMediaItem, kSrc,
                     [&settings](UTF16String source) { settings.items.push_back(std::move(source)); });
    const ElementReader reader(section);
    ReadSetting(reader, kIsCopy, kStatus, settings.isCopy);
    if (reader.Has(kCopyToFolder))
        settings.copyToFolder = reader.ChildAttribute(kCopyToFolder, kDst);
    ReadSetting(reader, kIsVerify, kStatus, settings.isVerify);
    ReadSetting(reader, kVerifyMode, kMode, settings.verifyMode);
}

void ReadTransferItemList(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kTransferItem, [&message](const DOMElement* element) {
        auto item = boost::make_shared<Ridge::TransferItem>();
        item->src = AttributeText(element, kSrc);
        item->dst = AttributeText(element, kDst);
        item->dstIsParent = item->dst.empty();
        if (item->dstIsParent)
            item->dst = AttributeText(element, kDstParent);
        message.transferItemList.push_back(std::move(item));
    });
}

void ReadFtpSetting(const DOMElement* section, ACMessage& message)
{
    FtpSetting& setting = message.ftpSetting;
    GetAttributeText(section, kFtpServerName, setting.ftpServerName);
    GetAttributeUInt(section, kFtpPort, setting.ftpPort);
    GetAttributeText(section, kFtpUserName, setting.ftpUserName);
    GetAttributeText(section, kFtpPassword, setting.ftpPassword);
}

void ReadRenameItemList(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kRenameItem, [&message](const DOMElement* item) {
        message.renameItemList.push_back({AttributeText(item, kSrc), AttributeText(item, kNewName)});
    });
}

void ReadTranscodeItemList(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kTranscodeItem, [&message](const DOMElement* element) {
        const ElementReader reader(element);
        auto item = ReadConversionItem<Ridge::TranscodeItem>(reader);
        item->outputFileName = reader.ChildText(kOutputFileName);
        message.transcodeItemList.push_back(std::move(item));
    });
}

void ReadConcatenationItemList(const DOMElement* section, ACMessage& message)
{
    ItemsByOrder<boost::shared_ptr<Ridge::ConcatenationItem>> items;
    ForEachItem(section, kConcatenationItem, [&items](const DOMElement* element) {
        items.Add(items.OrderOf(element),
                  ReadConversionItem<Ridge::ConcatenationItem>(ElementReader(element)));
    });
    items.MoveTo(message.concatenationItemList);
}

}  // namespace AC
