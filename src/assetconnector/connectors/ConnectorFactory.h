#pragma once

#include "assetconnector/connectors/ConnectorFrame.h"
#include "assetconnector/host/kiln/Exceptions.h"

#include <new>

namespace AC {

template <class Connector>
Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> ConnectorFrame::Create(
    ALD::IAssetLibraryDispatcher* dispatcher)
{
    auto* const connector = new (std::nothrow) Connector;
    if (connector == nullptr)
        throw Kiln::NullInterfaceException();
    ConnectorFrame& frame = *connector;
    frame.mBroker->SetObject(frame.GetRawPointer());
    const auto local = frame.GetInterfaceRef();
    frame.mDispatcher = dispatcher;

    frame.AddRef();
    void* notifier = nullptr;
    if (frame.QueryInterface(Ridge::IIngestLibraryNotifier::kInterfaceID, notifier) >= 0)
        return Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>::Adopt(
            static_cast<Ridge::IIngestLibraryNotifier*>(notifier));
    frame.Release();
    return {};
}

}  // namespace AC
