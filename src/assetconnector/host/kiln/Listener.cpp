#include "assetconnector/host/kiln/Listener.h"

#include "assetconnector/host/Host.h"

namespace Kiln {

Listener::~Listener()
{
    EndSubscriptions();
}

void Listener::DispatchMessageW(const Message& message)
{
    OnStationMessage(message);
}

void Listener::EndSubscriptions() noexcept
{
    if (const AC::HostServices* host = AC::FindHost())
        host->stations.EndSubscriptions(*this);
}

}  // namespace Kiln
