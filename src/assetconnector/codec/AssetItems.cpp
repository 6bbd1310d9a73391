#include "assetconnector/codec/AssetItems.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/ItemOrder.h"
#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/ReservedCharacters.h"
#include "assetconnector/host/ridge/AssetItem.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace AC {
namespace {

using namespace Vocabulary;
using Ridge::AssetItem;
using Ridge::AssetItemList;

/// Reads an item's own values. Not inlined into the recursion below, whose frames must stay small: a text
/// may nest items some 2,000 deep, and a thread of the host may have 1 MiB of stack.
AC_NOINLINE boost::shared_ptr<AssetItem> ReadAssetItem(const DOMElement* item)
{
    const ElementReader reader(item);
    const tempora::FrameRate rate = reader.Multiplier();
    UTF16String metadata;
    ferrite::xml::utils::DecodeReservedCharacters(reader.ChildText(kAssetMetadata), metadata);
    return boost::make_shared<AssetItem>(
        ClipTypeFromName(reader.ChildText(kType)), reader.ChildAttribute(kFilePath, kPath),
        GuidOf(reader.ChildAttribute(kAssetID, kID)), GuidOf(reader.ChildAttribute(kParentAssetID, kID)),
        GuidOf(reader.ChildAttribute(kMediaInfoID, kID)), reader.ChildText(kItemName), std::move(metadata),
        reader.ItemTime(kStartTime, rate), reader.ItemTime(kItemDuration, rate),
        reader.ItemTime(kCustomInPoint, rate), reader.ItemTime(kCustomOutPoint, rate),
        GuidOf(reader.ChildAttribute(kClipItemID, kID)), GuidOf(reader.ChildAttribute(kMarkerID, kID)),
        reader.ChildAttribute(kRelativePath, kPath), UTF16String());
}

/// Appends the items to the target once the last one is read.
void ReadItems(const DOMElement* section, AssetItemList& target, bool withoutSubItems)
{
    ItemsByOrder<boost::shared_ptr<AssetItem>> items;
    for (const DOMElement* item = FindChildElement(section, kAssetItem); item != nullptr;
         item = FindNextSiblingElement(item, kAssetItem)) {
        AssetItemList subItems;
        if (!withoutSubItems)
            if (const DOMElement* const nested = FindChildElement(item, kAssetItemList))
                ReadItems(nested, subItems, false);
        boost::shared_ptr<AssetItem> read = ReadAssetItem(item);
        read->SetSubAssetItemList(std::move(subItems));
        items.Add(items.OrderOf(item), std::move(read));
    }
    items.MoveTo(target);
}

/// Writes an item's own values; not inlined into the recursion, as above.
AC_NOINLINE void EncodeAssetItem(const AssetItem& item, std::int64_t order, const ElementWriter& writer)
{
    const bool hasTimes =
        item.GetInPoint() != tempora::kTime_Invalid || item.GetDuration() != tempora::kTime_Invalid;
    UTF16String metadata;
    ferrite::xml::utils::EncodeReservedCharacters(item.GetAssetMetadata(), metadata);

    writer.SetAttribute(kOrder, order);
    writer.Attribute(kFilePath, kPath, item.GetMediaPath());
    writer.Guid(kMediaInfoID, item.GetAssetMediaInfoGUID());
    writer.Guid(kParentAssetID, item.GetParentGUID());
    writer.Guid(kAssetID, item.GetAssetGUID());
    writer.NonZeroGuid(kClipItemID, item.GetAssetClipItemGuid());
    writer.NonZeroGuid(kMarkerID, item.GetAssetMarkerGuid());
    writer.Ticks(kStartTime, item.GetInPoint());
    writer.Ticks(kItemDuration, item.GetDuration());
    writer.Ticks(kCustomInPoint, item.GetCustomInPoint());
    writer.Ticks(kCustomOutPoint, item.GetCustomOutPoint());
    if (hasTimes)
        writer.Word(kFrameRate, kTickRate);
    writer.Text(kItemName, item.GetAssetName());
    writer.Word(kType, ClipTypeName(item.GetAssetMediaType()));
    writer.Attribute(kRelativePath, kPath, item.GetParentBinPath());
    writer.Text(kAssetMetadata, metadata);
}

void EncodeNestedItems(const AssetItemList& items, const ElementWriter& parent)
{
    if (items.empty())
        return;
    const ElementWriter section = parent.AppendChildElement(kAssetItemList);
    std::int64_t order = 0;
    for (const boost::shared_ptr<AssetItem>& item : items) {
        ++order;
        if (!item)
            continue;
        const ElementWriter writer = section.AppendChildElement(kAssetItem);
        EncodeAssetItem(*item, order, writer);
        EncodeNestedItems(item->GetSubAssetItemList(), writer);
    }
}

}  // namespace

void ReadAssetItemList(const DOMElement* section, ACMessage& message)
{
    ReadItems(section, message.assetItemList, message.roughCutUseLocalFile == kACMessage_True);
}

void EncodeAssetItemList(const ACMessage& message, const ElementWriter& root)
{
    EncodeNestedItems(message.assetItemList, root);
}

}  // namespace AC
