#include "assetconnector/host/ridge/AssetMediaInfo.h"

#include "assetconnector/host/Host.h"

namespace Ridge {

AssetMediaInfo::~AssetMediaInfo() = default;

boost::shared_ptr<AssetMediaInfo> AssetMediaInfo::Create(
    AssetMediaType type, const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const XMPText& xmp,
    const UTF16String& fileContent, const UTF16String& customMetadata, const UTF16String& createTime,
    const UTF16String& lastModifyTime, const UTF16String& rateTimeBase, const UTF16String& rateNtsc,
    const UTF16String& aliasName, bool reservedFlag, const UTF16String& reservedText)
{
    return AC::InstalledHost().ingestLibrary.CreateMediaInfo(
        {type, guid, mediaPath, xmp, fileContent, customMetadata, createTime, lastModifyTime, rateTimeBase,
         rateNtsc, aliasName, reservedFlag, reservedText});
}

boost::shared_ptr<AssetMediaInfo> AssetMediaInfo::CreateMasterClipMediaInfo(
    const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
    const XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
    const UTF16String& lastModifyTime, const UTF16String& reservedText)
{
    return AC::InstalledHost().ingestLibrary.CreateMasterClipMediaInfo(
        guid, mediaPath, fileName, xmp, customMetadata, createTime, lastModifyTime, reservedText);
}

}  // namespace Ridge
