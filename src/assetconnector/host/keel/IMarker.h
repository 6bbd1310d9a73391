#pragma once

#include "assetconnector/host/kiln/KilnUnknown.h"

namespace Keel {

/// A marker of the host, held by counted reference and read only through MarkerUtilities.
class IMarker : public KilnUnknown
{
};

}  // namespace Keel
