#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/ridge/AssetMediaType.h"
#include "assetconnector/host/ridge/RecordLists.h"
#include "assetconnector/host/tempora/Time.h"

namespace Keel {
class IMarker;
}

namespace Ridge {

class SRProject;

/// What AssetMediaInfo::Create was called with.
struct MediaInfoArguments
{
    AssetMediaType type = AssetMediaType::kUnknown;
    ferrite::utility::Guid guid;
    UTF16String mediaPath;
    XMPText xmp;  ///< May be null; it may be shared with others afterwards.
    UTF16String fileContent;
    UTF16String customMetadata;
    UTF16String createTime;  ///< This and the next three as the panel spelled them.
    UTF16String lastModifyTime;
    UTF16String rateTimeBase;
    UTF16String rateNtsc;
    UTF16String aliasName;
    bool reservedFlag = false;  ///< False at every call of the library.
    UTF16String reservedText;   ///< Empty at every call of the library.
};

/// The ingest library as far as the connectors use it: asset objects, the project registry, XMP access,
/// metadata providers, markers. Implemented by the host, called on whatever thread called the library,
/// several at once. Paths are what panels named: any text. What an operation throws travels untouched to the
/// caller, and what would have come after it does not happen.
class IIngestLibrary
{
public:
    virtual ~IIngestLibrary() = default;

    /// Makes a media info. \return A new object, or null: the caller goes on without it.
    virtual boost::shared_ptr<AssetMediaInfo> CreateMediaInfo(const MediaInfoArguments& arguments) = 0;

    /// Makes the media info of a master clip. \param createTime, lastModifyTime The two further strings of
    /// OnReadXMPFinished. \param reservedText Empty at every call. \return As CreateMediaInfo.
    virtual boost::shared_ptr<AssetMediaInfo> CreateMasterClipMediaInfo(
        const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
        const XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
        const UTF16String& lastModifyTime, const UTF16String& reservedText) = 0;

    /// \return The project registry, or null when no project is open.
    virtual boost::shared_ptr<SRProject> GetProject() = 0;

    /// Fills the holder with the XMP packet of a path, where one is known.
    /// \param holder Never null. \param scratch Read by nobody.
    /// \return Negative on failure; the holder may have changed all the same.
    virtual ResultCode ReadXMPFromCache(const UTF16String& mediaPath, const XMPText& holder,
                                        UTF16String& scratch) = 0;

    /// Registers what a record carries with the library's core; either list may be empty.
    /// \param useLocalFile, roughCutUseLocalFile The record's flags. \param firstFlag, secondFlag Passed
    /// through from the caller of ACUtils::RegisterAssetMediaInfoToSRCore.
    virtual void RegisterAssetMediaInfoToSRCore(const AssetMediaInfoList& infos, const AssetItemList& items,
                                                bool useLocalFile, bool roughCutUseLocalFile, bool firstFlag,
                                                bool secondFlag) = 0;

    /// \return The text form of the block, to travel as custom metadata.
    virtual UTF16String CreateCustomMetadataStr(const CustomMetadata& metadata) = 0;

    /// \return Whether a file of this path can carry XMP.
    virtual bool PathSupportsXMP(const UTF16String& path) = 0;

    /// Makes the database a provider of metadata. Called before the assets of a message are registered that
    /// does not say mediaUseLocalFile.
    virtual void RegisterDBMetadataProvider() = 0;

    /// \param normalizedPath From IFiles::ToNormalizedPath; may be registered already.
    virtual void RegisterDBMetadataProviderForPath(const UTF16String& normalizedPath) = 0;

    /// \param marker Not null. \param rate What the record says; any, the zero rate too.
    /// \return The marker's property XML with times at the given rate; empty when it has none.
    virtual UTF16String MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>& marker,
                                            tempora::FrameRate rate) = 0;
};

}  // namespace Ridge
