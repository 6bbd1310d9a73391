#pragma once

#include "assetconnector/host/Host.h"
#include "assetconnector/host/kiln/KilnUnknown.h"

namespace Keel {

/// A marker of the host, held by counted reference and read only through MarkerUtilities.
class IMarker : public KilnUnknown
{
};

namespace MarkerUtilities {

/// Forwards to Ridge::IIngestLibrary::MarkerToPropertyXML.
/// \param marker Not null. \return The marker's property XML with times at the given rate.
/// \throws std::logic_error without an installed host; what the host throws.
inline UTF16String ToPropertyXML(const Kiln::InterfaceRef<IMarker>& marker, tempora::FrameRate rate)
{
    return AC::InstalledHost().ingestLibrary.MarkerToPropertyXML(marker, rate);
}

}  // namespace MarkerUtilities
}  // namespace Keel
