#include "assetconnector/codec/AssetMediaInfos.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"
#include "assetconnector/codec/LibraryMetadata.h"
#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/codec/XMPPacket.h"
#include "assetconnector/host/ferrite/ReservedCharacters.h"
#include "assetconnector/host/kiln/Strings.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/Utilities.h"

#include <boost/make_shared.hpp>

#include <string_view>
#include <utility>

namespace AC {
namespace {

using namespace Vocabulary;
using Ridge::AssetMediaInfo;
using Ridge::AssetMediaType;

void ReadFileMetadata(const DOMElement* element, UTF16String& xmp, UTF16String& customMetadata)
{
    const ElementReader reader(element);
    xmp = UnwrappedPacket(reader.ChildText(kXmp));
    ferrite::xml::utils::DecodeReservedCharacters(reader.ChildText(kCustomMetadata), customMetadata);
}

/// \return The media info of one item; null when the host makes none.
boost::shared_ptr<AssetMediaInfo> ReadAssetMediaInfo(const DOMElement* item, bool mediaFlag,
                                                     bool roughCutFlag)
{
    const ElementReader reader(item);
    const UTF16String path = reader.ChildAttribute(kFilePath, kPath);
    const UTF16String aliasName = reader.ChildAttribute(kAliasName, kItemName);
    const ferrite::utility::Guid guid = GuidOf(reader.ChildAttribute(kAssetID, kID));
    const AssetMediaType type = ClipTypeFromName(reader.ChildText(kType));
    UTF16String packet;
    UTF16String customMetadata;
    ReadFileMetadata(reader.FindChildElement(kFileMetadata), packet, customMetadata);
    const ElementReader rate(reader.FindChildElement(kRate));
    const LibraryMetadata times = ReadLibraryMetadata(reader);
    bool forceLoad = mediaFlag;
    if (reader.Has(kForceLoadFromLoalDisk))
        reader.GetChildFlag(kForceLoadFromLoalDisk, forceLoad);

    const auto xmp = boost::make_shared<std::string>(Kiln::MakeStdString(packet));
    if (type == AssetMediaType::kMasterClip && forceLoad) {
        UTF16String scratch;
        Ridge::SRLibrarySupport::ReadXMPFromCache(path, xmp, scratch);
    }
    boost::shared_ptr<AssetMediaInfo> info =
        AssetMediaInfo::Create(type, guid, path, xmp, reader.ChildText(kFileContent), customMetadata,
                               times.creationTime, times.modificationTime, rate.ChildText(kTimebase),
                               rate.ChildText(kNtsc), aliasName, false, UTF16String());
    if (info && type == AssetMediaType::kMasterClip)
        info->SetNeedSavePreCheck(mediaFlag);
    if (info && type == AssetMediaType::kRoughCut)
        info->SetNeedSavePreCheck(roughCutFlag);
    return info;
}

void EncodeFileMetadata(const AssetMediaInfo& info, const ElementWriter& parent)
{
    const ElementWriter block = parent.AppendChildElement(kFileMetadata);
    if (const Ridge::XMPText xmp = info.GetXMPString())
        block.AppendChildElement(kXmp, WrappedPacket(*xmp));
    UTF16String customMetadata;
    ferrite::xml::utils::EncodeReservedCharacters(info.GetCustomMetadata(), customMetadata);
    block.Text(kCustomMetadata, customMetadata);
}

void EncodeRate(const AssetMediaInfo& info, const ElementWriter& parent)
{
    const UTF16String timebase = info.GetRateTimeBase();
    const UTF16String ntsc = info.GetRateNtsc();
    if (timebase.empty() || ntsc.empty())
        return;
    const ElementWriter block = parent.AppendChildElement(kRate);
    block.Text(kTimebase, timebase);
    block.Text(kNtsc, ntsc);
}

void EncodeAssetMediaInfo(const AssetMediaInfo& info, const ElementWriter& item)
{
    item.Attribute(kFilePath, kPath, info.GetMediaPath());
    item.Attribute(kAliasName, kItemName, info.GetAliasName());
    item.TriState(kForceLoadFromLoalDisk, info.GetForceLoadFromLocalDisk());
    item.Guid(kAssetID, info.GetAssetMediaInfoGUID());
    item.Word(kType, ClipTypeName(info.GetAssetMediaType()));
    EncodeFileMetadata(info, item);
    item.Text(kFileContent, info.GetFileContent());
    EncodeRate(info, item);
    EncodeLibraryMetadata({info.GetCreateTime(), info.GetLastModifyTime()}, item);
}

}  // namespace

void ReadAssetMediaInfoList(const DOMElement* section, ACMessage& message)
{
    const bool mediaFlag = message.mediaUseLocalFile == kACMessage_True;
    const bool roughCutFlag = message.roughCutUseLocalFile == kACMessage_True;
    ForEachItem(section, kAssetMediaInfo, [&](const DOMElement* item) {
        if (auto info = ReadAssetMediaInfo(item, mediaFlag, roughCutFlag))
            message.assetMediaInfoList.push_back(std::move(info));
    });
}

void EncodeAssetMediaInfoList(const ACMessage& message, const ElementWriter& root)
{
    EncodeItems(message.assetMediaInfoList, root, kAssetMediaInfoList, kAssetMediaInfo, EncodeAssetMediaInfo);
}

}  // namespace AC
