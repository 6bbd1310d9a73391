#pragma once

#include "assetconnector/connectors/IAssetConnectorPrivate.h"
#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/kiln/ReferenceBroker.h"
#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"

#include <optional>

/// What a host may want of a connector, or of another counted object, beside the interface by which it holds
/// it:
///
///     if (const auto connector = AC::Query<AC::IAssetConnectorPrivate>(reference))
///         connector->SetDispatcher(dispatcher);
///
/// Any thread that holds the reference throughout the call.
namespace AC {

/// \tparam Interface Has kInterfaceID. \param reference May be null.
/// \return A counted reference to that interface of the object; null when the object does not offer it.
template <class Interface, class Held>
Kiln::InterfaceRef<Interface> Query(const Kiln::InterfaceRef<Held>& reference)
{
    void* found = nullptr;
    if (!reference || reference->QueryInterface(Interface::kInterfaceID, found) < 0)
        return {};
    return Kiln::InterfaceRef<Interface>::Retain(static_cast<Interface*>(found));
}

/// \return A handle that tells whether the connector still exists, and outlives it; none for null and
///         for what is no connector of this library.
AC_API std::optional<Kiln::SharedReferenceBroker> BrokerOf(
    const Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>& reference);

}  // namespace AC
