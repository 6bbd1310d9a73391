#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ridge/AssetMediaType.h"
#include "assetconnector/host/ridge/RecordLists.h"

#include <cstdint>

namespace Ridge {

/// What an asset media info holds, for those who describe records member by member. The host's own class
/// need not be made of it.
struct AssetMediaInfoValues
{
    AssetMediaType assetMediaType = AssetMediaType::kUnknown;
    ferrite::utility::Guid assetMediaInfoGUID;
    UTF16String mediaPath;
    XMPText xmpString;
    UTF16String fileContent;
    UTF16String customMetadata;
    UTF16String createTime;
    UTF16String lastModifyTime;
    UTF16String rateTimeBase;
    UTF16String rateNtsc;
    UTF16String aliasName;
    std::int32_t forceLoadFromLocalDisk = -1;
    bool needSavePreCheck = false;
};

/// What the host knows of a media file. Implemented by the host, made by the two Create functions, held by
/// shared pointer, with which it keeps its values when the project is closed; read and changed by connectors
/// on the thread that called them. Not locked: the host keeps other threads from an object while a call that
/// carries it is under way.
class AC_API AssetMediaInfo
{
public:
    virtual ~AssetMediaInfo();

    /// Both forward to IIngestLibrary, where the arguments are stated; the first in the host's own form, of
    /// which a record is made.
    /// \return A new object, or null, which callers skip.
    /// \throws std::logic_error without an installed host; whatever the host throws.
    static boost::shared_ptr<AssetMediaInfo> Create(
        AssetMediaType type, const ferrite::utility::Guid& guid, const UTF16String& mediaPath,
        const XMPText& xmp, const UTF16String& fileContent, const UTF16String& customMetadata,
        const UTF16String& createTime, const UTF16String& lastModifyTime, const UTF16String& rateTimeBase,
        const UTF16String& rateNtsc, const UTF16String& aliasName, bool reservedFlag,
        const UTF16String& reservedText);
    static boost::shared_ptr<AssetMediaInfo> CreateMasterClipMediaInfo(
        const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
        const XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
        const UTF16String& lastModifyTime, const UTF16String& reservedText);

    virtual AssetMediaType GetAssetMediaType() const = 0;
    virtual ferrite::utility::Guid GetAssetMediaInfoGUID() const = 0;
    virtual UTF16String GetMediaPath() const = 0;
    virtual XMPText GetXMPString() const = 0;
    virtual UTF16String GetFileContent() const = 0;
    virtual UTF16String GetCustomMetadata() const = 0;
    virtual UTF16String GetCreateTime() const = 0;
    virtual UTF16String GetLastModifyTime() const = 0;
    virtual UTF16String GetRateTimeBase() const = 0;
    virtual UTF16String GetRateNtsc() const = 0;
    virtual UTF16String GetAliasName() const = 0;

    // Times, time base ("25") and NTSC flag ("TRUE", "FALSE") are texts that the library passes on as they
    // are.

    /// A tri-state: -1 not set, as in a new object, 1 true, anything else false.
    virtual std::int32_t GetForceLoadFromLocalDisk() const = 0;

    /// Whether saving must first look for a newer file on disk.
    virtual void SetNeedSavePreCheck(bool needed) = 0;
};

}  // namespace Ridge
