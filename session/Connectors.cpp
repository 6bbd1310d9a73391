#include "session/Connectors.h"

#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "session/format/FormatError.h"

#include <string>

namespace Session {
namespace {

/// Hands a message to one listener, past all stations.
class Delivery : public Kiln::IStations
{
public:
    static void To(Kiln::Listener& listener, const Kiln::Message& message) { Deliver(listener, message); }
};

}  // namespace

void Connectors::Create(std::size_t which)
{
    mAlive[which] =
        mFactory ? mFactory(which, DispatcherOf(which)) : kConnectorKinds[which].create(DispatcherOf(which));
}

void Connectors::Release(std::size_t which)
{
    mRecorder.ExpectEnd(kConnectorKinds[which].name);
    mAlive[which].Clear();
    mRecorder.ExpectEnd({});
}

void Connectors::SetWithoutDispatcher(const std::set<std::size_t>& kinds)
{
    mWithoutDispatcher = kinds;
    for (std::size_t which = 0; which < mAlive.size(); ++which)
        if (const auto connector = AC::Query<AC::IAssetConnectorPrivate>(mAlive[which]))
            connector->SetDispatcher(DispatcherOf(which));
}

void Connectors::SetReadsFromDisk(bool fromDisk)
{
    RequireAlive(Find("library"), true);
    auto* const library =
        dynamic_cast<AC::IngestGlintLibraryConnector*>(mAlive[Find("library")]->GetRawPointer());
    if (library == nullptr)
        throw FormatError("the library connector is none of this library");
    // Only such a request turns it.
    const Ridge::TandemEvent read(
        AC::kPlexaEventType_ReadXMPFromDisk,
        u"<browserMessage><assetMediaInfoList><assetMediaInfo/></assetMediaInfoList></browserMessage>");
    const Ridge::TandemEvent import(
        AC::kPlexaEventType_ImportXMP,
        u"<browserMessage><fileList><filePath path=\"a\"/></fileList></browserMessage>");
    mRecorder.SetMuted(true);
    Delivery::To(*library, fromDisk ? read : import);
    mRecorder.SetMuted(false);
}

std::size_t Connectors::Find(const std::string& name)
{
    for (std::size_t i = 0; i < std::size(kConnectorKinds); ++i)
        if (kConnectorKinds[i].name == name)
            return i;
    throw FormatError("unknown connector \"" + name + '"');
}

void Connectors::RequireAlive(std::size_t which, bool alive) const
{
    if (static_cast<bool>(mAlive[which]) != alive)
        throw FormatError((alive ? "there is no " : "there already is a ") +
                          std::string(kConnectorKinds[which].title));
}

ALD::IAssetLibraryDispatcher* Connectors::DispatcherOf(std::size_t which)
{
    return mWithoutDispatcher.count(which) != 0 ? nullptr : &mDispatcher;
}

}  // namespace Session
