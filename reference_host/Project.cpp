#include "reference_host/Project.h"

#include "reference_host/MediaInfo.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <utility>

namespace ReferenceHost {

boost::shared_ptr<Ridge::AssetMediaInfo> Project::GetAssetMediaInfo(const UTF16String& mediaPath,
                                                                    bool /*reservedFlag*/)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mInfos.find(mediaPath);
    return found == mInfos.end() ? nullptr : found->second;
}

void Project::RefreshAssetMediaInfoByPath(const UTF16String& mediaPath, const Ridge::XMPText& xmp)
{
    const boost::shared_ptr<Ridge::AssetMediaInfo> known = GetAssetMediaInfo(mediaPath, false);
    if (known == nullptr)
        return;
    Ridge::AssetMediaInfoValues values = MediaInfo::ValuesOf(*known);
    values.xmpString = xmp;
    boost::shared_ptr<Ridge::AssetMediaInfo> refreshed = boost::make_shared<MediaInfo>(std::move(values));
    const std::lock_guard<std::mutex> lock(mMutex);
    boost::shared_ptr<Ridge::AssetMediaInfo>& entry = mInfos[mediaPath];
    if (entry == known)  // else somebody registered another one meanwhile, which is newer
        entry.swap(refreshed);
}

void Project::RegisterAssetMediaInfoList(const Ridge::AssetItemList& /*items*/,
                                         const Ridge::AssetMediaInfoList& infos, bool /*firstFlag*/,
                                         bool /*secondFlag*/)
{
    for (boost::shared_ptr<Ridge::AssetMediaInfo> info : infos) {
        if (info == nullptr)
            continue;
        const UTF16String path = info->GetMediaPath();
        const std::lock_guard<std::mutex> lock(mMutex);
        mInfos[path].swap(info);
    }
}

}  // namespace ReferenceHost
