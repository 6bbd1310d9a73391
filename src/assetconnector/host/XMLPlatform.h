#pragma once

#include "assetconnector/host/Export.h"

namespace AC {

/// The XML library's platform, initialised as long as an object of this class lives. The host makes one
/// before it installs itself and lets it go after everything of the library. Several may live at once, made
/// and destroyed on one thread. A host that initialises the platform itself needs none.
class AC_API XMLPlatform
{
public:
    /// \throws xercesc::XMLException when the platform cannot be initialised.
    XMLPlatform();
    ~XMLPlatform();
    XMLPlatform(const XMLPlatform&) = delete;
    XMLPlatform& operator=(const XMLPlatform&) = delete;

    /// Any thread. \throws std::logic_error when the platform is not initialised, by whomever.
    static void Require();
};

}  // namespace AC
