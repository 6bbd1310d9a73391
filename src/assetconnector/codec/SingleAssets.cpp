#include "assetconnector/codec/SingleAssets.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/keel/MarkerUtilities.h"

namespace AC {

using namespace Vocabulary;

void ReadThumbnailRequest(const DOMElement* section, ACMessage& message)
{
    const ElementReader reader(section);
    ThumbnailRequest& request = message.thumbnailRequest;
    reader.GetChildText(kClipPath, request.clipPath);
    const UTF16String assetID = reader.ChildText(kAssetID);  // here the GUID is text
    if (!assetID.empty())
        request.assetID = GuidOf(assetID);
    request.startTime = reader.ChildTime(kStartTime, reader.Multiplier()).value_or(request.startTime);
    reader.GetChildText(kThumbPath, request.thumbPath);
}

void EncodeThumbnailRequest(const ACMessage& message, const ElementWriter& root)
{
    const ThumbnailRequest& request = message.thumbnailRequest;
    const bool hasStart = request.startTime != tempora::kTime_Invalid;
    if (request.clipPath.empty() && !hasStart)
        return;
    const ElementWriter block = root.AppendChildElement(kThumbnailRequest);
    block.Text(kAssetID, request.assetID.AsString());
    block.Text(kClipPath, request.clipPath);
    block.Text(kThumbPath, request.thumbPath);
    block.Ticks(kStartTime, request.startTime);
    if (hasStart)
        block.Word(kFrameRate, kTickRate);
}

void ReadMediaPropertyInfo(const DOMElement* section, ACMessage& message)
{
    const ElementReader reader(section);
    MediaPropertyInfo& info = message.mediaPropertyInfo;
    GetAttributeText(reader.FindChildElement(kFilePath), kPath, info.filePath);
    const UTF16String assetID = reader.ChildAttribute(kAssetID, kID);
    if (!assetID.empty())
        info.assetID = GuidOf(assetID);
    if (reader.Has(kFrameRate))
        info.frameRate = reader.Multiplier();
    info.startTime = reader.ChildTime(kStartTime, info.frameRate).value_or(info.startTime);
    info.duration = reader.ChildTime(kItemDuration, info.frameRate).value_or(info.duration);
}

void EncodeMediaPropertyInfo(const ACMessage& message, const ElementWriter& root)
{
    const MediaPropertyInfo& info = message.mediaPropertyInfo;
    if (info.assetID.IsZero() && info.filePath.empty())
        return;
    const ElementWriter block = root.AppendChildElement(kMediaPropertyInfo);
    block.Guid(kAssetID, info.assetID);
    block.Attribute(kFilePath, kPath, info.filePath);
    block.FrameRate(info.frameRate);
    block.Frames(kStartTime, info.startTime, info.frameRate);
    block.Frames(kItemDuration, info.duration, info.frameRate);
}

namespace {

void EncodeSubClipInfo(const SubClipInfo& info, const ElementWriter& item)
{
    const ElementWriter block = item.AppendChildElement(kSubClipInfo);
    block.FrameRate(info.frameRate);
    block.Frames(kStartTime, info.startTime, info.frameRate);
    block.Frames(kItemDuration, info.duration, info.frameRate);
    block.Text(kMarkerID, info.markerID);
}

}  // namespace

void EncodeSelectedItemInfoList(const ACMessage& message, const ElementWriter& root)
{
    EncodeItems(message.selectedItemInfoList, root, kSelectedItemInfoList, kSelectedItemInfo,
                [](const SelectedItemInfo& info, const ElementWriter& item) {
                    item.Attribute(kFilePath, kPath, info.filePath);
                    item.Text(kAliasName, info.aliasName);
                    item.Word(kType, ClipTypeName(info.type));
                    item.Guid(kAssetID, info.assetID);
                    item.Text(kExtraMediaPath, info.extraMediaPath);
                    if (info.type == Ridge::AssetMediaType::kSubClip && info.subClipInfo)
                        EncodeSubClipInfo(*info.subClipInfo, item);
                });
}

void EncodeMarkerInfoList(const ACMessage& message, const ElementWriter& root)
{
    EncodeItems(message.markerInfoList, root, kMarkerInfoList, kMarkerInfo,
                [](const MarkerInfo& info, const ElementWriter& item) {
                    item.Text(kOwnerClipPath, info.ownerClipPath);
                    if (info.marker)
                        item.Text(kMarker, Keel::MarkerUtilities::ToPropertyXML(info.marker, info.frameRate));
                });
}

}  // namespace AC
