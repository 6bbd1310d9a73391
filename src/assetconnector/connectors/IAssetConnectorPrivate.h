#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "assetconnector/host/kiln/KilnUnknown.h"

namespace AC {

/// What the host may do with a connector beside calling it back. Implemented by the connectors; the order of
/// the operations crosses the binary boundary and must not change.
class IAssetConnectorPrivate : public KilnUnknown
{
public:
    /// {05CB16FD-091F-4D0C-9B73-97E030715A93}
    AC_CONSTANT static constexpr ferrite::utility::Guid kInterfaceID{0x05CB16FD091F4D0C, 0x9B7397E030715A93};

    /// Replaces the dispatcher, for requests that arrive from now on. Any thread.
    /// \param dispatcher The host's, which keeps it alive, and the one that it replaces, as
    ///                   IAssetLibraryDispatcher says; null: requests are not forwarded any more, what the
    ///                   connector answers itself still goes out.
    virtual void SetDispatcher(ALD::IAssetLibraryDispatcher* dispatcher) = 0;
};

}  // namespace AC
