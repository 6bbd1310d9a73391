#include "assetconnector/host/loft/Utilities.h"

namespace Loft {

const ferrite::utility::ImmutableString kStation_BriselProject =
    ferrite::utility::ImmutableString::CreateStatic("Loft.Station.BriselProject");

}  // namespace Loft
