#pragma once

#include "assetconnector/host/ridge/IIngestLibrary.h"
#include "reference_host/Project.h"

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace ReferenceHost {

/// The ingest library in memory: asset objects (MediaInfo), one project, an XMP cache, metadata providers,
/// markers (Marker). Every operation may be called on any thread. A host that needs an operation otherwise
/// derives and overrides it.
class IngestLibrary : public Ridge::IIngestLibrary
{
public:
    /// A project is open: an empty Project.
    IngestLibrary();

    /// \return A MediaInfo of the arguments, with -1 for forceLoadFromLocalDisk and false for
    ///         needSavePreCheck. Never null.
    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMediaInfo(
        const Ridge::MediaInfoArguments& arguments) override;

    /// \return A MediaInfo of type kMasterClip with the file name as its alias. Never null.
    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMasterClipMediaInfo(
        const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
        const Ridge::XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
        const UTF16String& lastModifyTime, const UTF16String& reservedText) override;

    boost::shared_ptr<Ridge::SRProject> GetProject() override;

    /// \param project Null: no project is open.
    void SetProject(boost::shared_ptr<Ridge::SRProject> project);

    /// Gives what SetCachedXMP said of the path, -1 for another path. Without a packet the holder stays as
    /// it is; with one the holder gets it whatever the code is.
    Ridge::ResultCode ReadXMPFromCache(const UTF16String& mediaPath, const Ridge::XMPText& holder,
                                       UTF16String& scratch) override;

    /// \param code What ReadXMPFromCache returns for the path. \param packet What the holder gets.
    void SetCachedXMP(const UTF16String& mediaPath, Ridge::ResultCode code,
                      std::optional<std::string> packet = std::nullopt);

    /// Forgets every path of SetCachedXMP.
    void ClearCachedXMP();

    /// Does nothing: this host has no core behind its project.
    void RegisterAssetMediaInfoToSRCore(const Ridge::AssetMediaInfoList& infos,
                                        const Ridge::AssetItemList& items, bool useLocalFile,
                                        bool roughCutUseLocalFile, bool firstFlag, bool secondFlag) override;

    /// \return A line for each flag that is set, each keyword, and each property as "prefix:name=value".
    UTF16String CreateCustomMetadataStr(const Ridge::CustomMetadata& metadata) override;

    /// \return Whether the path is one of SetXMPPaths, or its extension one of SetXMPExtensions.
    bool PathSupportsXMP(const UTF16String& path) override;

    /// \param paths Compared unit by unit. None until they are set.
    void SetXMPPaths(std::set<UTF16String> paths);

    /// \param extensions With their point, in lower case; those of paths are compared without regard to
    ///        the case of ASCII letters. The usual media files until they are set.
    void SetXMPExtensions(std::set<UTF16String> extensions);

    void RegisterDBMetadataProvider() override;
    void RegisterDBMetadataProviderForPath(const UTF16String& normalizedPath) override;

    /// \return The paths with a provider; empty for the one without a path.
    std::set<UTF16String> MetadataProviders() const;

    /// \return The text of a Marker; empty for a marker of another class.
    UTF16String MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>& marker,
                                    tempora::FrameRate rate) override;

private:
    struct CachedXMP
    {
        Ridge::ResultCode code;
        std::optional<std::string> packet;
    };

    mutable std::mutex mMutex;
    boost::shared_ptr<Ridge::SRProject> mProject;
    std::map<UTF16String, CachedXMP> mXMPCache;
    std::set<UTF16String> mXMPPaths;
    std::set<UTF16String> mXMPExtensions;
    std::set<UTF16String> mProviders;
};

}  // namespace ReferenceHost
