// Raw event types and texts reach both connectors. The first byte chooses an event of the catalogue, or,
// beyond them, the type is the input's first line.

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "fuzz/FuzzHost.h"
#include "reference_host/ForwardingDispatcher.h"

#include <algorithm>

namespace {

struct Connectors
{
    ReferenceHost::IdleDispatcher dispatcher;
    Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> library =
        AC::CreateIngestGlintLibraryConnector(&dispatcher);
    Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> mediaCollection =
        AC::CreateIngestMediaCollectionConnector(&dispatcher);
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ReferenceHost::Host& host = FuzzHost::Get().Host();
    static const Connectors connectors;
    if (size == 0)
        return 0;
    UTF16String type;
    std::size_t at = 1;
    if (data[0] < AC::EventCatalogue().size()) {
        type = *AC::EventCatalogue()[data[0]].identifier;
    } else {
        const auto* const end = std::find(data + 1, data + size, '\n');
        at = static_cast<std::size_t>(end - data);
        type = TextOf(data + 1, at - 1);
    }
    host.GetIngestLibrary().SetProject(boost::make_shared<ReferenceHost::Project>());
    host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(),
                                        Ridge::TandemEvent(type, TextOf(data + at, size - at)));
    host.GetStations().DeliverPosted();
    return 0;
}
