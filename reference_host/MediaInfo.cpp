#include "reference_host/MediaInfo.h"

namespace ReferenceHost {

Ridge::AssetMediaInfoValues MediaInfo::ValuesOf(const Ridge::AssetMediaInfo& info)
{
    if (const auto* own = dynamic_cast<const MediaInfo*>(&info))
        return own->Values();
    Ridge::AssetMediaInfoValues values;
    values.assetMediaType = info.GetAssetMediaType();
    values.assetMediaInfoGUID = info.GetAssetMediaInfoGUID();
    values.mediaPath = info.GetMediaPath();
    values.xmpString = info.GetXMPString();
    values.fileContent = info.GetFileContent();
    values.customMetadata = info.GetCustomMetadata();
    values.createTime = info.GetCreateTime();
    values.lastModifyTime = info.GetLastModifyTime();
    values.rateTimeBase = info.GetRateTimeBase();
    values.rateNtsc = info.GetRateNtsc();
    values.aliasName = info.GetAliasName();
    values.forceLoadFromLocalDisk = info.GetForceLoadFromLocalDisk();
    return values;
}

}  // namespace ReferenceHost
