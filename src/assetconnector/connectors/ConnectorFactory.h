#pragma once

#include "assetconnector/connectors/ConnectorFrame.h"

#include <new>

namespace AC {

/// Makes connectors, as the two exported factories promise.
class ConnectorFactory
{
public:
    using Notifier = Ridge::IIngestLibraryNotifier;

    template <class Connector>
    static Kiln::InterfaceRef<Notifier> Create(ALD::IAssetLibraryDispatcher* dispatcher)
    {
        return Finish(new (std::nothrow) Connector, dispatcher);
    }

private:
    /// Binds the broker of a connector that listens already, and takes the caller's reference.
    static Kiln::InterfaceRef<Notifier> Finish(ConnectorFrame* connector,
                                               ALD::IAssetLibraryDispatcher* dispatcher);
};

}  // namespace AC
