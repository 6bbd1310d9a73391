// A module that uses the shared library as a host would, and goes away with it.

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "reference_host/Host.h"

/// \return How many blocks of the host's memory are left, 0 when all is well; -1 for an exception.
extern "C" AC_API int UseLibrary()
{
    try {
        ReferenceHost::Host host(ReferenceHost::Stations::Delivery::kByHand);
        {
            const ReferenceHost::Installation installation(host);
            const auto library = AC::CreateIngestGlintLibraryConnector(nullptr);
            const auto mediaCollection = AC::CreateIngestMediaCollectionConnector(nullptr);
            host.GetStations().BroadcastMessage(
                Ridge::GetPlexaStationID(), Ridge::TandemEvent(AC::kPlexaEventType_OpenIngestDlg, u"<a/>"));
            library->OnIngestStarted(ferrite::utility::Guid::CreateUnique());
            mediaCollection->OnIngestStarted(ferrite::utility::Guid::CreateUnique());
            host.GetStations().DeliverPosted();
        }
        return static_cast<int>(host.GetMemory().LiveBlocks());
    } catch (...) {
        return -1;
    }
}
