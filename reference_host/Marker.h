#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "reference_host/Counted.h"

#include <utility>

namespace ReferenceHost {

/// A marker with a fixed property XML text, the same at every rate. Immutable.
class Marker final : public Counted<Keel::IMarker>
{
public:
    static Kiln::InterfaceRef<Keel::IMarker> Make(UTF16String propertyXML)
    {
        return Kiln::InterfaceRef<Keel::IMarker>::Retain(new Marker(std::move(propertyXML)));
    }

    const UTF16String& PropertyXML() const noexcept { return mPropertyXML; }

private:
    explicit Marker(UTF16String propertyXML) : mPropertyXML(std::move(propertyXML)) {}

    const UTF16String mPropertyXML;
};

}  // namespace ReferenceHost
