#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ridge/AssetMediaType.h"
#include "assetconnector/host/ridge/RecordLists.h"
#include "assetconnector/host/tempora/Time.h"

#include <utility>

namespace Ridge {

/// What an asset item holds, in the order of AssetItem's constructor, the sub-items last.
struct AssetItemValues
{
    AssetMediaType assetMediaType = AssetMediaType::kUnknown;
    UTF16String mediaPath;
    ferrite::utility::Guid assetGUID;
    ferrite::utility::Guid parentGUID;
    ferrite::utility::Guid assetMediaInfoGUID;
    UTF16String assetName;
    UTF16String assetMetadata;
    tempora::TickTime inPoint;
    tempora::TickTime duration;
    tempora::TickTime customInPoint;
    tempora::TickTime customOutPoint;
    ferrite::utility::Guid assetClipItemGuid;
    ferrite::utility::Guid assetMarkerGuid;
    UTF16String parentBinPath;
    AssetItemList subAssetItemList;
};

/// An asset of the host's library: a clip, a part of one or a rough cut. Plain storage. Held by shared
/// pointer and not locked: whoever changes an item keeps other threads from it.
class AssetItem
{
public:
    explicit AssetItem(AssetItemValues values) : mValues(std::move(values)) {}

    /// \param unused The host's fifteenth value, which nothing reads; empty at every call of the library.
    AssetItem(AssetMediaType type, UTF16String mediaPath, const ferrite::utility::Guid& assetGUID,
              const ferrite::utility::Guid& parentGUID, const ferrite::utility::Guid& assetMediaInfoGUID,
              UTF16String name, UTF16String metadata, tempora::TickTime inPoint, tempora::TickTime duration,
              tempora::TickTime customInPoint, tempora::TickTime customOutPoint,
              const ferrite::utility::Guid& clipItemGuid, const ferrite::utility::Guid& markerGuid,
              UTF16String parentBinPath, const UTF16String& unused)
        : mValues{type,
                  std::move(mediaPath),
                  assetGUID,
                  parentGUID,
                  assetMediaInfoGUID,
                  std::move(name),
                  std::move(metadata),
                  inPoint,
                  duration,
                  customInPoint,
                  customOutPoint,
                  clipItemGuid,
                  markerGuid,
                  std::move(parentBinPath),
                  {}}
    {
        static_cast<void>(unused);
    }

    AssetMediaType GetAssetMediaType() const { return mValues.assetMediaType; }
    const UTF16String& GetMediaPath() const { return mValues.mediaPath; }
    const ferrite::utility::Guid& GetAssetGUID() const { return mValues.assetGUID; }
    const ferrite::utility::Guid& GetParentGUID() const { return mValues.parentGUID; }
    const ferrite::utility::Guid& GetAssetMediaInfoGUID() const { return mValues.assetMediaInfoGUID; }
    const UTF16String& GetAssetName() const { return mValues.assetName; }
    const UTF16String& GetAssetMetadata() const { return mValues.assetMetadata; }
    tempora::TickTime GetInPoint() const { return mValues.inPoint; }
    tempora::TickTime GetDuration() const { return mValues.duration; }
    tempora::TickTime GetCustomInPoint() const { return mValues.customInPoint; }
    tempora::TickTime GetCustomOutPoint() const { return mValues.customOutPoint; }
    const ferrite::utility::Guid& GetAssetClipItemGuid() const { return mValues.assetClipItemGuid; }
    const ferrite::utility::Guid& GetAssetMarkerGuid() const { return mValues.assetMarkerGuid; }
    const UTF16String& GetParentBinPath() const { return mValues.parentBinPath; }
    const AssetItemList& GetSubAssetItemList() const { return mValues.subAssetItemList; }

    /// All of them at once, for those who describe records member by member.
    const AssetItemValues& Values() const { return mValues; }

    void SetSubAssetItemList(AssetItemList items) { mValues.subAssetItemList = std::move(items); }
    void SetAssetMediaInfoGUID(const ferrite::utility::Guid& guid) { mValues.assetMediaInfoGUID = guid; }

private:
    AssetItemValues mValues;
};

}  // namespace Ridge
