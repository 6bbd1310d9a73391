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
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mInfos.find(mediaPath);
    if (found == mInfos.end())
        return;
    Ridge::AssetMediaInfoValues values = MediaInfo::ValuesOf(*found->second);
    values.xmpString = xmp;
    found->second = boost::make_shared<MediaInfo>(std::move(values));
}

void Project::RegisterAssetMediaInfoList(const Ridge::AssetItemList& items,
                                         const Ridge::AssetMediaInfoList& infos, bool /*first*/,
                                         bool /*second*/)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    for (const auto& info : infos)
        if (info != nullptr)
            mInfos[info->GetMediaPath()] = info;
    for (const auto& item : items)
        if (item != nullptr)
            mItems.push_back(item);
}

Ridge::AssetMediaInfoList Project::MediaInfos() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    Ridge::AssetMediaInfoList infos;
    for (const auto& [path, info] : mInfos)
        infos.push_back(info);
    return infos;
}

Ridge::AssetItemList Project::Items() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mItems;
}

}  // namespace ReferenceHost
