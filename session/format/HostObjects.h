#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/host/kiln/KilnUnknown.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"

#include <optional>
#include <string>

namespace Session {

/// What of a host's objects their interfaces do not tell, and somebody who knows the host's classes may. Any
/// thread.
class HostObjects
{
public:
    virtual ~HostObjects() = default;

    /// \return Whether saving must first look for a newer file; nothing where nobody can tell: the member is
    /// then
    ///         left out.
    virtual std::optional<bool> NeedSavePreCheck(const Ridge::AssetMediaInfo& info) const = 0;

    /// \return What a session calls the object, UTF-8; nothing for one without a name, which is written as
    /// null.
    virtual std::optional<std::string> NameOf(const KilnUnknown& object) const = 0;

    /// \return The text that stands for the marker.
    virtual UTF16String PropertyXMLOf(const Keel::IMarker& marker) const = 0;

protected:
    HostObjects() = default;
    HostObjects(const HostObjects&) = default;
    HostObjects& operator=(const HostObjects&) = default;
};

}  // namespace Session
