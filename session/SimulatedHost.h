#pragma once

#include "reference_host/Forwarders.h"
#include "reference_host/Host.h"
#include "session/Recorder.h"

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <utility>

namespace Session {

/// A disk that is a table. Both normal forms of a path are the path.
class SimulatedFiles final : public Kiln::IFiles
{
public:
    enum class Kind
    {
        kMissing,
        kFile,
        kFolder,
    };

    /// \param disk What is there. A path that it does not name is missing.
    void SetDisk(std::map<UTF16String, Kind> disk) { mDisk = std::move(disk); }

    bool ExistsOnDisk(const UTF16String& path) override { return KindOf(path) != Kind::kMissing; }
    bool IsDirectory(const UTF16String& path) override { return KindOf(path) == Kind::kFolder; }
    UTF16String ToNormalizedPath(const UTF16String& path) override { return path; }
    UTF16String NormalizePathWithoutUNC(const UTF16String& path) override { return path; }

private:
    Kind KindOf(const UTF16String& path) const
    {
        const auto found = mDisk.find(path);
        return found == mDisk.end() ? Kind::kMissing : found->second;
    }

    std::map<UTF16String, Kind> mDisk;
};

/// GUIDs that can be foretold.
class SimulatedTexts final : public ReferenceHost::Texts
{
public:
    /// \param guids Those that are handed out next.
    void SetGuids(std::list<ferrite::utility::Guid> guids) { mGuids = std::move(guids); }

    /// \return The next of SetGuids; without one, 00000000-0000-4000-8000- and the number of the call.
    ferrite::utility::Guid CreateUniqueGuid() override;

private:
    std::list<ferrite::utility::Guid> mGuids;
    std::uint64_t mCount = 0;
};

/// Fails to make media infos when it is told to; custom metadata travels as compact JSON.
class SimulatedIngestLibrary final : public ReferenceHost::IngestLibrary
{
public:
    SimulatedIngestLibrary() { SetXMPExtensions({}); }

    /// \param paths Media paths for which no media info is made.
    void SetFailing(std::set<UTF16String> paths) { mFailing = std::move(paths); }

    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMediaInfo(
        const Ridge::MediaInfoArguments& arguments) override;
    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMasterClipMediaInfo(
        const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
        const Ridge::XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
        const UTF16String& lastModifyTime, const UTF16String& reservedText) override;
    UTF16String CreateCustomMetadataStr(const Ridge::CustomMetadata& metadata) override;

private:
    std::set<UTF16String> mFailing;
};

/// The host that session files are played on: the reference host, told what to answer, behind forwarders that
/// record. Installed as long as it lives. One thread.
class SimulatedHost
{
public:
    /// Puts something in front of the services.
    using Wrap = boost::function<AC::HostServices(const AC::HostServices& services)>;

    /// \param recorder Outlives this object. \param wrap What is installed; empty: the services themselves.
    explicit SimulatedHost(Recorder& recorder, const Wrap& wrap = {});

    Recorder& GetRecorder() { return mRecorder; }
    ReferenceHost::Stations& GetStations() { return mStations; }
    ReferenceHost::PanelEvents& GetPanelEvents() { return mPanelEvents; }
    SimulatedIngestLibrary& GetIngestLibrary() { return mIngestLibrary; }
    SimulatedFiles& GetFiles() { return mFiles; }
    SimulatedTexts& GetTexts() { return mTexts; }

private:
    AC::HostServices Services();

    Recorder& mRecorder;

    ReferenceHost::Memory mMemory;
    SimulatedFiles mFiles;
    SimulatedTexts mTexts;
    SimulatedIngestLibrary mIngestLibrary;
    ReferenceHost::Stations mStations{ReferenceHost::Stations::Delivery::kByHand};
    ReferenceHost::PanelEvents mPanelEvents{mStations};

    ReferenceHost::ForwardingFiles<Recorder> mForwardedFiles{mFiles, mRecorder};
    ReferenceHost::ForwardingTexts<Recorder> mForwardedTexts{mTexts, mRecorder};
    ReferenceHost::ForwardingIngestLibrary<Recorder> mForwardedIngestLibrary{mIngestLibrary, mRecorder};
    ReferenceHost::ForwardingStations<Recorder> mForwardedStations{mStations, mRecorder};
    ReferenceHost::ForwardingPanelEvents<Recorder> mForwardedPanelEvents{mPanelEvents, mRecorder};
    ReferenceHost::Installation mInstallation;
};

}  // namespace Session
