#include "assetconnector/registration/ACUtils.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/SRProject.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/message/ResultNames.h"

#include <boost/make_shared.hpp>

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace AC {
namespace {

using Ridge::AssetItem;
using Ridge::AssetMediaInfo;
using Ridge::AssetMediaType;

/// Gives every asset item of a record a media info. Lives for one call.
class MediaInfoCompletion
{
public:
    MediaInfoCompletion(Ridge::AssetMediaInfoList& infos, bool masterFlag, bool roughCutFlag)
        : mInfos(infos), mMasterFlag(masterFlag), mRoughCutFlag(roughCutFlag)
    {
        for (const auto& info : mInfos)
            if (info)
                Index(info);
    }

    void Complete(AssetItem& item)
    {
        if (mGuids.count(item.GetAssetMediaInfoGUID()) != 0)
            return;
        const auto known = mByPath.find(item.GetMediaPath());
        if (known != mByPath.end())
            item.SetAssetMediaInfoGUID(known->second->GetAssetMediaInfoGUID());
        else
            CreateFor(item);
    }

private:
    /// The first info of a path stays.
    void Index(const boost::shared_ptr<AssetMediaInfo>& info)
    {
        mByPath.emplace(info->GetMediaPath(), info);
        mGuids.insert(info->GetAssetMediaInfoGUID());
    }

    void CreateFor(const AssetItem& item)
    {
        const auto xmp = boost::make_shared<std::string>();
        UTF16String scratch;
        Ridge::SRLibrarySupport::ReadXMPFromCache(item.GetMediaPath(), xmp, scratch);
        const bool isRoughCut = item.GetAssetMediaType() == AssetMediaType::kRoughCut;
        const UTF16String none;
        const boost::shared_ptr<AssetMediaInfo> info =
            AssetMediaInfo::Create(isRoughCut ? AssetMediaType::kRoughCut : AssetMediaType::kMasterClip,
                                   item.GetAssetMediaInfoGUID(), item.GetMediaPath(), xmp, none, none, none,
                                   none, none, none, none, false, none);
        if (!info)
            return;
        // What the host made decides, not what was asked for.
        if (info->GetAssetMediaType() == AssetMediaType::kMasterClip)
            info->SetNeedSavePreCheck(mMasterFlag);
        else if (info->GetAssetMediaType() == AssetMediaType::kRoughCut)
            info->SetNeedSavePreCheck(mRoughCutFlag);
        Index(info);
        mInfos.push_back(info);
    }

    Ridge::AssetMediaInfoList& mInfos;
    bool mMasterFlag;
    bool mRoughCutFlag;
    std::map<UTF16String, boost::shared_ptr<AssetMediaInfo>> mByPath;
    std::set<ferrite::utility::Guid> mGuids;
};

/// \return The items and their direct sub-items, each item before its own; null entries left out.
std::vector<boost::shared_ptr<AssetItem>> ItemsToComplete(const Ridge::AssetItemList& items)
{
    std::vector<boost::shared_ptr<AssetItem>> work;
    const auto add = [&work](const boost::shared_ptr<AssetItem>& item) {
        if (item)
            work.push_back(item);
    };
    for (const auto& item : items) {
        add(item);
        if (item)
            for (const auto& subItem : item->GetSubAssetItemList())
                add(subItem);
    }
    return work;
}

void CompleteMediaInfoList(Ridge::AssetMediaInfoList& infos, const Ridge::AssetItemList& items,
                           bool masterFlag, bool roughCutFlag)
{
    if (!roughCutFlag || items.empty())
        return;
    MediaInfoCompletion completion(infos, masterFlag, roughCutFlag);
    for (const auto& item : ItemsToComplete(items))
        completion.Complete(*item);
}

void RegisterProviderForMasterClips(const Ridge::AssetMediaInfoList& infos)
{
    for (const auto& info : infos)
        if (info && info->GetAssetMediaType() == AssetMediaType::kMasterClip)
            Ridge::Utilities::RegisterDBMetadataProviderForPath(
                Kiln::PathUtils::ToNormalizedPath(info->GetMediaPath()));
}

}  // namespace

bool ACUtils::DecodeXMLAndRegisterMediaInfo(const UTF16String& xml, ACMessage& message)
{
    if (!ACMessageDecoder::DecodeXMLString(xml, message))
        return false;
    CompleteMediaInfoList(message.assetMediaInfoList, message.assetItemList,
                          message.mediaUseLocalFile == kACMessage_True,
                          message.roughCutUseLocalFile == kACMessage_True);
    const bool needsProvider = message.mediaUseLocalFile == kACMessage_False;
    if (needsProvider)
        Ridge::Utilities::RegisterDBMetadataProvider();
    if (const boost::shared_ptr<Ridge::SRProject> project = Ridge::SRProject::GetInstance())
        project->RegisterAssetMediaInfoList(message.assetItemList, message.assetMediaInfoList, false, false);
    if (needsProvider)
        RegisterProviderForMasterClips(message.assetMediaInfoList);
    return true;
}

void ACUtils::RegisterAssetMediaInfoToSRCore(const ACMessage& message, bool firstFlag, bool secondFlag)
{
    Ridge::SRLibrarySupport::RegisterAssetMediaInfoToSRCore(
        message.assetMediaInfoList, message.assetItemList, message.mediaUseLocalFile == kACMessage_True,
        message.roughCutUseLocalFile == kACMessage_True, firstFlag, secondFlag);
}

UTF16String ACUtils::GetResultString(int code)
{
    return ResultName(code);
}

}  // namespace AC
