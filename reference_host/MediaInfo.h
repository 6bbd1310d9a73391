#pragma once

#include "assetconnector/host/ridge/AssetMediaInfo.h"

#include <utility>

namespace ReferenceHost {

/// A media info that stores what it was made of. Not locked, as its interface says.
class MediaInfo : public Ridge::AssetMediaInfo
{
public:
    explicit MediaInfo(Ridge::AssetMediaInfoValues values) : mValues(std::move(values)) {}

    const Ridge::AssetMediaInfoValues& Values() const noexcept { return mValues; }

    /// \return What any media info tells. needSavePreCheck is known of a MediaInfo alone, else false.
    static Ridge::AssetMediaInfoValues ValuesOf(const Ridge::AssetMediaInfo& info);

    Ridge::AssetMediaType GetAssetMediaType() const override { return mValues.assetMediaType; }
    ferrite::utility::Guid GetAssetMediaInfoGUID() const override { return mValues.assetMediaInfoGUID; }
    UTF16String GetMediaPath() const override { return mValues.mediaPath; }
    Ridge::XMPText GetXMPString() const override { return mValues.xmpString; }
    UTF16String GetFileContent() const override { return mValues.fileContent; }
    UTF16String GetCustomMetadata() const override { return mValues.customMetadata; }
    UTF16String GetCreateTime() const override { return mValues.createTime; }
    UTF16String GetLastModifyTime() const override { return mValues.lastModifyTime; }
    UTF16String GetRateTimeBase() const override { return mValues.rateTimeBase; }
    UTF16String GetRateNtsc() const override { return mValues.rateNtsc; }
    UTF16String GetAliasName() const override { return mValues.aliasName; }
    std::int32_t GetForceLoadFromLocalDisk() const override { return mValues.forceLoadFromLocalDisk; }
    void SetNeedSavePreCheck(bool needed) override { mValues.needSavePreCheck = needed; }

private:
    Ridge::AssetMediaInfoValues mValues;
};

}  // namespace ReferenceHost
