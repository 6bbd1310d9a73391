#include "assetconnector/host/ridge/Utilities.h"

namespace Ridge {

ferrite::utility::ImmutableString GetPlexaStationID()
{
    static const auto name = ferrite::utility::ImmutableString::CreateStatic("Ridge.Station.PanelServices");
    return name;
}

}  // namespace Ridge
