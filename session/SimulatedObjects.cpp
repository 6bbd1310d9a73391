#include "session/SimulatedObjects.h"

#include "reference_host/Marker.h"
#include "reference_host/MediaInfo.h"

namespace Session {

ValueWriter SimulatedObjects::WriterFor(Style style)
{
    static const SimulatedObjects objects;
    return {style, objects};
}

std::optional<bool> SimulatedObjects::NeedSavePreCheck(const Ridge::AssetMediaInfo& info) const
{
    return ReferenceHost::MediaInfo::ValuesOf(info).needSavePreCheck;
}

std::optional<std::string> SimulatedObjects::NameOf(const KilnUnknown& object) const
{
    const auto* const named = dynamic_cast<const NamedObject*>(&object);
    return named == nullptr ? std::nullopt : std::optional(named->Name());
}

UTF16String SimulatedObjects::PropertyXMLOf(const Keel::IMarker& marker) const
{
    const auto* const own = dynamic_cast<const ReferenceHost::Marker*>(&marker);
    return own == nullptr ? UTF16String() : own->PropertyXML();
}

}  // namespace Session
