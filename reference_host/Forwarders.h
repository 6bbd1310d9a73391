#pragma once

#include "assetconnector/host/ferrite/ITexts.h"
#include "assetconnector/host/kiln/IFiles.h"
#include "assetconnector/host/kiln/IMemory.h"
#include "assetconnector/host/kiln/IStations.h"
#include "assetconnector/host/plexa/IPanelEvents.h"
#include "assetconnector/host/ridge/IIngestLibrary.h"
#include "assetconnector/host/ridge/SRProject.h"

#include <boost/shared_ptr.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <utility>

/// A forwarder for each service, to put in front of any implementation of it: every call goes to a hook
/// and then on. Recording, failing and throwing are hooks.
///
/// A hook is called as `hook(operation, arguments...)`: the operation as const char*, by the name under
/// which the library calls it, and the arguments as const references to their own types. What it throws
/// reaches the caller, and the call is not passed on. It runs on the caller's thread, on several at once.
///
/// Service and hook belong to the caller and outlive the forwarder.
namespace ReferenceHost {

namespace Detail {

template <class Hook, class Next, class... Arguments>
auto CallThrough(Hook& hook, int /*preferred*/, const char* operation, const Next& next,
                 const Arguments&... arguments) -> decltype(hook.Around(operation, next, arguments...))
{
    return hook.Around(operation, next, arguments...);
}

template <class Hook, class Next, class... Arguments>
decltype(auto) CallThrough(Hook& hook, long /*otherwise*/, const char* operation, const Next& next,
                           const Arguments&... arguments)
{
    hook(operation, arguments...);
    return next();
}

}  // namespace Detail

template <class Service, class Hook>
class Forwarder : public Service
{
public:
    Forwarder(Service& next, Hook& hook) : mNext(next), mHook(hook) {}

protected:
    template <class Result, class... Parameters, class... Arguments>
    Result Pass(const char* operation, Result (Service::*call)(Parameters...), Arguments&... arguments)
    {
        return Detail::CallThrough(
            mHook, 0, operation, [&]() -> Result { return (mNext.*call)(arguments...); }, arguments...);
    }

    Service& mNext;
    Hook& mHook;
};

template <class Hook>
class ForwardingPanelEvents : public Forwarder<Plexa::IPanelEvents, Hook>
{
    using Next = Plexa::IPanelEvents;

public:
    using Forwarder<Next, Hook>::Forwarder;

    void AddTandemEventListener(const UTF16String& type, void* callback) override
    {
        this->Pass("PlexaManager::AddTandemEventListener", &Next::AddTandemEventListener, type, callback);
    }
    void RemoveTandemEventListener(const UTF16String& type, void* callback) override
    {
        this->Pass("PlexaManager::RemoveTandemEventListener", &Next::RemoveTandemEventListener, type,
                   callback);
    }
    void DispatchApplicationEvent(const std::string& type, const std::string& data) override
    {
        this->Pass("PlexaManager::DispatchApplicationEvent", &Next::DispatchApplicationEvent, type, data);
    }
    std::string GetBrowserID() override
    {
        return this->Pass("PlexaManager::GetBrowserID", &Next::GetBrowserID);
    }
};

template <class Hook>
class ForwardingStations : public Forwarder<Kiln::IStations, Hook>
{
    using Next = Kiln::IStations;

public:
    using Forwarder<Next, Hook>::Forwarder;

    void AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener) override
    {
        this->Pass("Kiln::StationUtils::AddListener", &Next::AddListener, station, listener);
    }
    /// Here the hook must not throw.
    void EndSubscriptions(Kiln::Listener& listener) noexcept override
    {
        this->Pass("Kiln::Listener::EndSubscriptions", &Next::EndSubscriptions, listener);
    }
    void BroadcastMessage(const ferrite::utility::ImmutableString& station,
                          const Kiln::Message& message) override
    {
        this->Pass("Kiln::StationUtils::BroadcastMessage", &Next::BroadcastMessage, station, message);
    }
    void PostMessageToUIThread(const ferrite::utility::ImmutableString& station, const Kiln::Message& message,
                               bool flag) override
    {
        this->Pass("Kiln::StationUtils::PostMessageToUIThread", &Next::PostMessageToUIThread, station,
                   message, flag);
    }
};

/// Keeps the project that it forwards to.
template <class Hook>
class ForwardingProject : public Forwarder<Ridge::SRProject, Hook>
{
    using Next = Ridge::SRProject;

public:
    /// \param next Not null.
    ForwardingProject(boost::shared_ptr<Ridge::SRProject> next, Hook& hook)
        : Forwarder<Next, Hook>(*next, hook), mKept(std::move(next))
    {
    }

    boost::shared_ptr<Ridge::AssetMediaInfo> GetAssetMediaInfo(const UTF16String& mediaPath,
                                                               bool reservedFlag) override
    {
        return this->Pass("Ridge::SRProject::GetAssetMediaInfo", &Next::GetAssetMediaInfo, mediaPath,
                          reservedFlag);
    }
    void RefreshAssetMediaInfoByPath(const UTF16String& mediaPath, const Ridge::XMPText& xmp) override
    {
        this->Pass("Ridge::SRProject::RefreshAssetMediaInfoByPath", &Next::RefreshAssetMediaInfoByPath,
                   mediaPath, xmp);
    }
    void RegisterAssetMediaInfoList(const Ridge::AssetItemList& items, const Ridge::AssetMediaInfoList& infos,
                                    bool firstFlag, bool secondFlag) override
    {
        this->Pass("Ridge::SRProject::RegisterAssetMediaInfoList", &Next::RegisterAssetMediaInfoList, items,
                   infos, firstFlag, secondFlag);
    }

private:
    boost::shared_ptr<Ridge::SRProject> mKept;
};

template <class Hook>
class ForwardingIngestLibrary : public Forwarder<Ridge::IIngestLibrary, Hook>
{
    using Next = Ridge::IIngestLibrary;

public:
    using Forwarder<Next, Hook>::Forwarder;

    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMediaInfo(
        const Ridge::MediaInfoArguments& arguments) override
    {
        return this->Pass("Ridge::AssetMediaInfo::Create", &Next::CreateMediaInfo, arguments);
    }
    boost::shared_ptr<Ridge::AssetMediaInfo> CreateMasterClipMediaInfo(
        const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
        const Ridge::XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
        const UTF16String& lastModifyTime, const UTF16String& reservedText) override
    {
        return this->Pass("Ridge::AssetMediaInfo::CreateMasterClipMediaInfo",
                          &Next::CreateMasterClipMediaInfo, guid, mediaPath, fileName, xmp, customMetadata,
                          createTime, lastModifyTime, reservedText);
    }
    /// \return A forwarder to the project; null stays null.
    boost::shared_ptr<Ridge::SRProject> GetProject() override
    {
        auto project = this->Pass("Ridge::SRProject::GetInstance", &Next::GetProject);
        if (project == nullptr)
            return project;
        return boost::make_shared<ForwardingProject<Hook>>(std::move(project), this->mHook);
    }
    Ridge::ResultCode ReadXMPFromCache(const UTF16String& mediaPath, const Ridge::XMPText& holder,
                                       UTF16String& scratch) override
    {
        return this->Pass("Ridge::SRLibrarySupport::ReadXMPFromCache", &Next::ReadXMPFromCache, mediaPath,
                          holder, scratch);
    }
    void RegisterAssetMediaInfoToSRCore(const Ridge::AssetMediaInfoList& infos,
                                        const Ridge::AssetItemList& items, bool useLocalFile,
                                        bool roughCutUseLocalFile, bool firstFlag, bool secondFlag) override
    {
        this->Pass("Ridge::SRLibrarySupport::RegisterAssetMediaInfoToSRCore",
                   &Next::RegisterAssetMediaInfoToSRCore, infos, items, useLocalFile, roughCutUseLocalFile,
                   firstFlag, secondFlag);
    }
    UTF16String CreateCustomMetadataStr(const Ridge::CustomMetadata& metadata) override
    {
        return this->Pass("Ridge::Utilities::CreateCustomMetadataStr", &Next::CreateCustomMetadataStr,
                          metadata);
    }
    bool PathSupportsXMP(const UTF16String& path) override
    {
        return this->Pass("Ridge::Utilities::PathSupportsXMP", &Next::PathSupportsXMP, path);
    }
    void RegisterDBMetadataProvider() override
    {
        this->Pass("Ridge::Utilities::RegisterDBMetadataProvider", &Next::RegisterDBMetadataProvider);
    }
    void RegisterDBMetadataProviderForPath(const UTF16String& normalizedPath) override
    {
        this->Pass("Ridge::Utilities::RegisterDBMetadataProviderForPath",
                   &Next::RegisterDBMetadataProviderForPath, normalizedPath);
    }
    UTF16String MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>& marker,
                                    tempora::FrameRate rate) override
    {
        return this->Pass("Keel::MarkerUtilities::ToPropertyXML", &Next::MarkerToPropertyXML, marker, rate);
    }
};

template <class Hook>
class ForwardingFiles : public Forwarder<Kiln::IFiles, Hook>
{
    using Next = Kiln::IFiles;

public:
    using Forwarder<Next, Hook>::Forwarder;

    bool ExistsOnDisk(const UTF16String& path) override
    {
        return this->Pass("Kiln::PathUtils::ExistsOnDisk", &Next::ExistsOnDisk, path);
    }
    bool IsDirectory(const UTF16String& path) override
    {
        return this->Pass("Kiln::PathUtils::IsDirectory", &Next::IsDirectory, path);
    }
    UTF16String ToNormalizedPath(const UTF16String& path) override
    {
        return this->Pass("Kiln::PathUtils::ToNormalizedPath", &Next::ToNormalizedPath, path);
    }
    UTF16String NormalizePathWithoutUNC(const UTF16String& path) override
    {
        return this->Pass("Loft::Utilities::NormalizePathWithoutUNC", &Next::NormalizePathWithoutUNC, path);
    }
};

template <class Hook>
class ForwardingTexts : public Forwarder<ferrite::ITexts, Hook>
{
    using Next = ferrite::ITexts;

public:
    using Forwarder<Next, Hook>::Forwarder;

    UTF16String Localize(const UTF16String& key) override
    {
        return this->Pass("ferrite::config::Localizer::Lookup", &Next::Localize, key);
    }
    void SetSDKInfoString(const UTF16String& text, const UTF16String& detail) override
    {
        this->Pass("Spur::SDKErrors::SetSDKInfoString", &Next::SetSDKInfoString, text, detail);
    }
    ferrite::utility::Guid CreateUniqueGuid() override
    {
        return this->Pass("ferrite::utility::Guid::CreateUnique", &Next::CreateUniqueGuid);
    }
};

template <class Hook>
class ForwardingMemory : public Forwarder<Kiln::IMemory, Hook>
{
    using Next = Kiln::IMemory;

public:
    using Forwarder<Next, Hook>::Forwarder;

    void* Allocate(std::size_t size) override
    {
        return this->Pass("Kiln::Allocator::Allocate", &Next::Allocate, size);
    }
    /// The hook does not see it: giving memory back must not fail.
    void Dispose(void* memory, std::size_t size) noexcept override { this->mNext.Dispose(memory, size); }
};

}  // namespace ReferenceHost
