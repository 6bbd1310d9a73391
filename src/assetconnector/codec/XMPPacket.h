#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"

#include <string>

/// An XMP packet travels between the markers of a CDATA section, which are part of an ordinary text. In
/// decoded notifications they become a real one.
namespace AC {

/// \return What stands between the markers; the whole text without them, or with them in the wrong order.
UTF16String UnwrappedPacket(UTF16String text);

/// \param packet UTF-8. \return The packet between the markers.
UTF16String WrappedPacket(const std::string& packet);

}  // namespace AC
