// A host that asks a broker, before and behind windows.h.
#include "assetconnector/host/kiln/ReferenceBroker.h"

KilnUnknown* Before(const Kiln::ReferenceBroker& broker);
KilnUnknown* Before(const Kiln::ReferenceBroker& broker)
{
    return broker.GetObject();
}

#include <windows.h>

KilnUnknown* Behind(const Kiln::ReferenceBroker& broker);
KilnUnknown* Behind(const Kiln::ReferenceBroker& broker)
{
    return broker.GetObject();
}
