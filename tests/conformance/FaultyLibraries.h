#pragma once

#include "reference_host/MediaInfo.h"
#include "tests/conformance/Rig.h"

#include <mutex>
#include <set>
#include <stdexcept>

/// Ingest libraries with one fault each.
namespace FaultyLibraries {

using Ridge::MediaInfoArguments;
using Info = boost::shared_ptr<Ridge::AssetMediaInfo>;
using Library = ReferenceHost::IngestLibrary;

struct SwapsTimes : Library
{
    Info CreateMediaInfo(const MediaInfoArguments& arguments) override
    {
        MediaInfoArguments swapped = arguments;
        swapped.createTime.swap(swapped.lastModifyTime);
        return Library::CreateMediaInfo(swapped);
    }
};

struct LoadsFromDisk : Library
{
    Info CreateMediaInfo(const MediaInfoArguments& arguments) override
    {
        auto values = ReferenceHost::MediaInfo::ValuesOf(*Library::CreateMediaInfo(arguments));
        values.forceLoadFromLocalDisk = 0;
        return boost::make_shared<ReferenceHost::MediaInfo>(values);
    }
};

struct UntypedMasterClips : Library
{
    Info CreateMasterClipMediaInfo(const ferrite::utility::Guid& guid, const UTF16String& mediaPath,
                                   const UTF16String& /*fileName*/, const Ridge::XMPText& xmp,
                                   const UTF16String& customMetadata, const UTF16String& createTime,
                                   const UTF16String& lastModifyTime,
                                   const UTF16String& /*reservedText*/) override
    {
        MediaInfoArguments arguments;
        arguments.guid = guid;
        arguments.mediaPath = mediaPath;
        arguments.xmp = xmp;
        arguments.customMetadata = customMetadata;
        arguments.createTime = createTime;
        arguments.lastModifyTime = lastModifyTime;
        return CreateMediaInfo(arguments);
    }
};

struct WantsXMP : Library
{
    Info CreateMediaInfo(const MediaInfoArguments& arguments) override
    {
        if (!arguments.xmp)
            throw std::invalid_argument("no XMP");
        return Library::CreateMediaInfo(arguments);
    }
};

/// \tparam FaultyProject The project, with the fault.
template <class FaultyProject>
struct WithProject : Library
{
    WithProject() { SetProject(boost::make_shared<FaultyProject>()); }
};

struct WritesIntoPackets : ReferenceHost::Project
{
    void RefreshAssetMediaInfoByPath(const UTF16String& mediaPath, const Ridge::XMPText& xmp) override
    {
        if (const Info known = GetAssetMediaInfo(mediaPath, false))
            *known->GetXMPString() = *xmp;
    }
};

struct ForgetsGuids : ReferenceHost::Project
{
    Info GetAssetMediaInfo(const UTF16String& mediaPath, bool reservedFlag) override
    {
        const Info known = Project::GetAssetMediaInfo(mediaPath, reservedFlag);
        if (!known)
            return known;
        auto values = ReferenceHost::MediaInfo::ValuesOf(*known);
        values.assetMediaInfoGUID = {};
        return boost::make_shared<ReferenceHost::MediaInfo>(values);
    }
    /// The reference project's own, which looks for the very object.
    void RefreshAssetMediaInfoByPath(const UTF16String& mediaPath, const Ridge::XMPText& xmp) override
    {
        const Info known = Project::GetAssetMediaInfo(mediaPath, false);
        if (!known)
            return;
        auto values = ReferenceHost::MediaInfo::ValuesOf(*known);
        values.xmpString = xmp;
        RegisterAssetMediaInfoList({}, {boost::make_shared<ReferenceHost::MediaInfo>(values)}, false, false);
    }
};

struct RefreshesKnownAlone : ReferenceHost::Project
{
    void RefreshAssetMediaInfoByPath(const UTF16String& mediaPath, const Ridge::XMPText& xmp) override
    {
        if (!GetAssetMediaInfo(mediaPath, false))
            throw std::out_of_range("not registered");
        Project::RefreshAssetMediaInfoByPath(mediaPath, xmp);
    }
};

struct WantsEntries : ReferenceHost::Project
{
    void RegisterAssetMediaInfoList(const Ridge::AssetItemList& items, const Ridge::AssetMediaInfoList& infos,
                                    bool firstFlag, bool secondFlag) override
    {
        for (const Info& info : infos)
            if (!info)
                throw std::invalid_argument("null");
        Project::RegisterAssetMediaInfoList(items, infos, firstFlag, secondFlag);
    }
};

struct NeverRefreshes : ReferenceHost::Project
{
    void RefreshAssetMediaInfoByPath(const UTF16String& /*mediaPath*/, const Ridge::XMPText& /*xmp*/) override
    {
    }
};

struct InfoOfProject : ReferenceHost::MediaInfo
{
    InfoOfProject(const Ridge::AssetMediaInfoValues& values, boost::shared_ptr<bool> inOpen)
        : MediaInfo(values), open(std::move(inOpen))
    {
    }
    UTF16String GetAliasName() const override { return *open ? MediaInfo::GetAliasName() : UTF16String(); }
    const boost::shared_ptr<bool> open;
};

struct InfosGoWithTheProject : Library
{
    Info CreateMediaInfo(const MediaInfoArguments& arguments) override
    {
        return boost::make_shared<InfoOfProject>(
            ReferenceHost::MediaInfo::ValuesOf(*Library::CreateMediaInfo(arguments)), open);
    }
    void SetProject(const boost::shared_ptr<Ridge::SRProject>& project)
    {
        *open = project != nullptr;
        Library::SetProject(project);
    }
    const boost::shared_ptr<bool> open = boost::make_shared<bool>(true);
};

struct WantsAProject : Library
{
    boost::shared_ptr<Ridge::SRProject> GetProject() override
    {
        auto project = Library::GetProject();
        if (!project)
            throw std::logic_error("no project");
        return project;
    }
};

struct KeepsPackets : Library
{
    Ridge::ResultCode ReadXMPFromCache(const UTF16String& mediaPath, const Ridge::XMPText& /*holder*/,
                                       UTF16String& scratch) override
    {
        return Library::ReadXMPFromCache(mediaPath, boost::make_shared<std::string>(), scratch);
    }
};

struct GivesTheLastPacket : Library
{
    void SetCachedXMP(const UTF16String& mediaPath, Ridge::ResultCode code, const std::string& packet)
    {
        last = packet;
        Library::SetCachedXMP(mediaPath, code, packet);
    }
    Ridge::ResultCode ReadXMPFromCache(const UTF16String& mediaPath, const Ridge::XMPText& holder,
                                       UTF16String& scratch) override
    {
        if (Library::ReadXMPFromCache(mediaPath, holder, scratch) < 0)
            *holder = last;
        return 0;
    }
    std::string last;
};

struct NoCustomMetadata : Library
{
    UTF16String CreateCustomMetadataStr(const Ridge::CustomMetadata& /*metadata*/) override { return {}; }
};

struct WantsExtensions : Library
{
    bool PathSupportsXMP(const UTF16String& path) override
    {
        return path.substr(path.rfind(u'.')) == u".mov";
    }
};

struct ProvidersOnce : Library
{
    void RegisterDBMetadataProviderForPath(const UTF16String& normalizedPath) override
    {
        if (MetadataProviders().count(normalizedPath) != 0)
            throw std::logic_error("registered already");
        Library::RegisterDBMetadataProviderForPath(normalizedPath);
    }
};

struct WantsAssets : Library
{
    void RegisterAssetMediaInfoToSRCore(const Ridge::AssetMediaInfoList& infos,
                                        const Ridge::AssetItemList& /*items*/, bool /*useLocalFile*/,
                                        bool /*roughCutUseLocalFile*/, bool /*firstFlag*/,
                                        bool /*secondFlag*/) override
    {
        if (infos.empty())
            throw std::invalid_argument("nothing to register");
    }
};

struct MarkersAtOneRate : Library
{
    UTF16String MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>& marker,
                                    tempora::FrameRate rate) override
    {
        if (rate == tempora::kFrameRate_Zero)
            throw std::invalid_argument("no rate");
        return Library::MarkerToPropertyXML(marker, rate);
    }
};

struct NoMarkers : Library
{
    UTF16String MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>& /*marker*/,
                                    tempora::FrameRate /*rate*/) override
    {
        return {};
    }
};

struct LibraryOfOneThread : Library
{
    Info CreateMediaInfo(const MediaInfoArguments& arguments) override
    {
        thread.Require();
        return Library::CreateMediaInfo(arguments);
    }
    OneThread thread;
};

}  // namespace FaultyLibraries
