#include "assetconnector/connectors/ConnectorFrame.h"

#include "assetconnector/connectors/ConnectorTables.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/TandemEvents.h"

namespace AC {

ConnectorFrame::ConnectorFrame(const ConnectorTables& tables) : mTables(tables) {}

ConnectorFrame::~ConnectorFrame() = default;

void ConnectorFrame::AddRef()
{
    mBroker->AddRef();
}

void ConnectorFrame::Release()
{
    // Keeps the broker until its Release is through: another thread may destroy this connector, and with it
    // the last handle, between the two steps of that Release.
    const Kiln::SharedReferenceBroker broker = mBroker;
    broker->Release();
}

std::int32_t ConnectorFrame::QueryInterface(const Guid& interfaceID, void*& out)
{
    if (interfaceID == Ridge::IIngestLibraryNotifier::kInterfaceID) {
        out = static_cast<Ridge::IIngestLibraryNotifier*>(this);
        return 0;
    }
    if (interfaceID == IAssetConnectorPrivate::kInterfaceID) {
        out = static_cast<IAssetConnectorPrivate*>(this);
        return 0;
    }
    out = nullptr;
    return Ridge::IIngestLibraryNotifier::kNoInterface;
}

KilnUnknown* ConnectorFrame::GetRawPointer()
{
    return static_cast<Ridge::IIngestLibraryNotifier*>(this);
}

Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> ConnectorFrame::GetInterfaceRef()
{
    return Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>::Retain(this);
}

Kiln::SharedReferenceBroker ConnectorFrame::GetReferenceBroker()
{
    return mBroker;
}

void ConnectorFrame::SetDispatcher(ALD::IAssetLibraryDispatcher* dispatcher)
{
    mDispatcher = dispatcher;
}

void ConnectorFrame::Subscribe()
{
    try {
        for (const StationName station : mTables.stations)
            Kiln::StationUtils::AddListener(station(), this);
    } catch (...) {
        // Before the derived part goes: another thread may be inside a delivery by now.
        EndSubscriptions();
        throw;
    }
}

void ConnectorFrame::OnStationMessage(const Kiln::Message& message)
{
    if (message.MessageTypeID() == Ridge::TandemEvent::TypeID()) {
        const auto& event = static_cast<const Ridge::TandemEvent&>(message);
        OnPanelRequest(event.GetType(), event.GetData());
    } else if (message.MessageTypeID() == Ridge::AddTandemListenerEvent::TypeID()) {
        AddTandemEvents();
    } else if (message.MessageTypeID() == Ridge::RemoveTandemListenerEvent::TypeID()) {
        RemoveTandemEvents();
    }
}

void ConnectorFrame::OnPanelRequest(const UTF16String& type, const UTF16String& data)
{
    HandleRequest(mTables.requests, type, data,
                  [dispatcher = Dispatcher()](const RequestRow& row, ACMessage& request) {
                      row.handle({row, request, dispatcher});
                  });
}

}  // namespace AC
