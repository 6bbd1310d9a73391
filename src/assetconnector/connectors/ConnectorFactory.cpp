#include "assetconnector/connectors/ConnectorFactory.h"

#include "assetconnector/host/kiln/Exceptions.h"

namespace AC {

Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> ConnectorFactory::Finish(
    ConnectorFrame* connector, ALD::IAssetLibraryDispatcher* dispatcher)
{
    if (connector == nullptr)
        throw Kiln::NullInterfaceException();
    connector->mBroker->SetObject(connector->GetRawPointer());
    const auto local = connector->GetInterfaceRef();
    connector->mDispatcher = dispatcher;

    connector->AddRef();
    void* notifier = nullptr;
    if (connector->QueryInterface(Notifier::kInterfaceID, notifier) >= 0)
        return Kiln::InterfaceRef<Notifier>::Adopt(static_cast<Notifier*>(notifier));
    connector->Release();
    return {};
}

}  // namespace AC
