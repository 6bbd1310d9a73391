#pragma once

#include "assetconnector/host/Host.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/host/kiln/InterfaceRef.h"

namespace Keel::MarkerUtilities {

/// Forwards to Ridge::IIngestLibrary::MarkerToPropertyXML.
/// \param marker Not null. \return The marker's property XML with times at the given rate.
/// \throws std::logic_error without an installed host; what the host throws.
inline UTF16String ToPropertyXML(const Kiln::InterfaceRef<IMarker>& marker, tempora::FrameRate rate)
{
    return AC::InstalledHost().ingestLibrary.MarkerToPropertyXML(marker, rate);
}

}  // namespace Keel::MarkerUtilities
