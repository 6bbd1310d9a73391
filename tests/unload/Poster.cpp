// A plug-in of a host, built with a compiler's default options and without the reference host: it brings
// services of its own, makes messages of the library's classes and of its own, posts and delivers them.

#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/Installation.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/message/Comparison.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string>

namespace {

/// A message that is no class of the library.
class OwnMessage : public Kiln::MessageImpl<OwnMessage>
{
public:
    static constexpr char kTypeName[] = ".?AVOwnMessage@@";
};

struct PanelEvents : Plexa::IPanelEvents
{
    void AddTandemEventListener(const UTF16String& /*type*/, void* /*callback*/) override {}
    void RemoveTandemEventListener(const UTF16String& /*type*/, void* /*callback*/) override {}
    void DispatchApplicationEvent(const std::string& /*type*/, const std::string& /*data*/) override {}
    std::string GetBrowserID() override { return "panel"; }
};

/// Copies what is posted in both ways and delivers it at once.
struct Stations : Kiln::IStations
{
    void AddListener(const ferrite::utility::ImmutableString& /*station*/, Kiln::Listener& listener) override
    {
        last = &listener;
    }
    void EndSubscriptions(Kiln::Listener& /*listener*/) noexcept override { last = nullptr; }
    void BroadcastMessage(const ferrite::utility::ImmutableString& /*station*/,
                          const Kiln::Message& message) override
    {
        ++delivered;
        if (last != nullptr)
            Deliver(*last, message);
    }
    void PostMessageToUIThread(const ferrite::utility::ImmutableString& station, const Kiln::Message& message,
                               bool /*flag*/) override
    {
        const std::unique_ptr<Kiln::Message> copy(message.Clone());
        copy->CreateStationCallback(station)();
    }

    Kiln::Listener* last = nullptr;
    int delivered = 0;
};

struct IngestLibrary : Ridge::IIngestLibrary
{
    using Info = boost::shared_ptr<Ridge::AssetMediaInfo>;
    using Guid = ferrite::utility::Guid;

    Info CreateMediaInfo(const Ridge::MediaInfoArguments&) override { return {}; }
    Info CreateMasterClipMediaInfo(const Guid&, const UTF16String&, const UTF16String&, const Ridge::XMPText&,
                                   const UTF16String&, const UTF16String&, const UTF16String&,
                                   const UTF16String&) override
    {
        return {};
    }
    boost::shared_ptr<Ridge::SRProject> GetProject() override { return {}; }
    Ridge::ResultCode ReadXMPFromCache(const UTF16String&, const Ridge::XMPText&, UTF16String&) override
    {
        return Ridge::kFailure;
    }
    void RegisterAssetMediaInfoToSRCore(const Ridge::AssetMediaInfoList&, const Ridge::AssetItemList&, bool,
                                        bool, bool, bool) override
    {
    }
    UTF16String CreateCustomMetadataStr(const Ridge::CustomMetadata&) override { return {}; }
    bool PathSupportsXMP(const UTF16String&) override { return false; }
    void RegisterDBMetadataProvider() override {}
    void RegisterDBMetadataProviderForPath(const UTF16String&) override {}
    UTF16String MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>&, tempora::FrameRate) override
    {
        return {};
    }
};

struct Files : Kiln::IFiles
{
    bool ExistsOnDisk(const UTF16String&) override { return false; }
    bool IsDirectory(const UTF16String&) override { return false; }
    UTF16String ToNormalizedPath(const UTF16String& path) override { return path; }
    UTF16String NormalizePathWithoutUNC(const UTF16String& path) override { return path; }
};

struct Texts : ferrite::ITexts
{
    UTF16String Localize(const UTF16String& key) override { return key; }
    void SetSDKInfoString(const UTF16String&, const UTF16String&) override {}
    ferrite::utility::Guid CreateUniqueGuid() override { return {1, 1}; }
};

struct Memory : Kiln::IMemory
{
    void* Allocate(std::size_t size) override
    {
        ++live;
        return std::malloc(size);
    }
    void Dispose(void* memory, std::size_t /*size*/) noexcept override
    {
        --live;
        std::free(memory);
    }

    int live = 0;
};

bool IsOneOf(const ferrite::utility::Guid& identifier,
             std::initializer_list<const ferrite::utility::Guid*> known)
{
    return std::any_of(known.begin(), known.end(),
                       [&identifier](const auto* each) { return *each == identifier; });
}

}  // namespace

/// \return 0 when all is well.
extern "C" int UseLibrary()
{
    PanelEvents panelEvents;
    Stations stations;
    IngestLibrary ingestLibrary;
    Files files;
    Texts texts;
    Memory memory;
    {
        const AC::Installation installation(
            AC::HostServices{panelEvents, stations, ingestLibrary, files, texts, memory}, [] {});
        const auto connector = AC::CreateIngestMediaCollectionConnector(nullptr);
        connector->OnIngestStarted(ferrite::utility::Guid::CreateUnique());
        AC::Query<AC::IAssetConnectorPrivate>(connector)->SetDispatcher(nullptr);
        const auto station = Ridge::GetPlexaStationID();
        Kiln::StationUtils::PostMessageToUIThread(station, OwnMessage(), true);
        Kiln::StationUtils::PostMessageToUIThread(station, AC::SaveAssetMessage(AC::ACMessage()), true);
        Kiln::StationUtils::BroadcastMessage(station, Ridge::TandemEvent(u"type", u"data"));
    }
    // Constants of headers, where they need a place in memory.
    const bool isKnown = std::string(AC::SaveAssetMessage::kTypeName) != Ridge::TandemEvent::kTypeName &&
                         IsOneOf(Ridge::IIngestLibraryNotifier::kInterfaceID,
                                 {&Ridge::IIngestLibraryNotifier::kInterfaceID}) &&
                         AC::Comparison::Same(AC::ACMessage(), AC::ACMessage());
    return isKnown && stations.delivered == 4 && memory.live == 0 ? 0 : 1;
}
