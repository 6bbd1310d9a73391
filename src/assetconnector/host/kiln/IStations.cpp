#include "assetconnector/host/kiln/IStations.h"

#include "assetconnector/host/kiln/Listener.h"

namespace Kiln {

void IStations::Deliver(Listener& listener, const Message& message)
{
    listener.DispatchMessageW(message);
}

}  // namespace Kiln
