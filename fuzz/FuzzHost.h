#pragma once

#include "assetconnector/host/XMLPlatform.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "reference_host/Host.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// What most fuzz targets run on: the XML platform and an installed reference host.
class FuzzHost
{
public:
    static FuzzHost& Get()
    {
        static FuzzHost host;
        return host;
    }

    ReferenceHost::Host& Host() { return mHost; }

private:
    FuzzHost() = default;

    AC::XMLPlatform mPlatform;
    ReferenceHost::Host mHost{ReferenceHost::Stations::Delivery::kByHand};
    ReferenceHost::Installation mInstallation{mHost};
};

/// \return The bytes as a panel's text.
inline UTF16String TextOf(const std::uint8_t* data, std::size_t size)
{
    return ferrite::utility::UTF8to16({reinterpret_cast<const char*>(data), size});
}

/// Ends the process when a property does not hold.
inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}
