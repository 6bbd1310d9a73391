#pragma once

#include "session/format/HostObjects.h"

namespace Recording {

/// Objects of a host whose classes nobody knows here. What has no text gets a name made of its address.
class UnknownObjects final : public Session::HostObjects
{
public:
    static const UnknownObjects& Get();

    /// \return Nothing: no getter tells.
    std::optional<bool> NeedSavePreCheck(const Ridge::AssetMediaInfo& info) const override;
    std::optional<std::string> NameOf(const KilnUnknown& object) const override;
    /// \return A name. What the host makes of the marker is an answer of its own.
    UTF16String PropertyXMLOf(const Keel::IMarker& marker) const override;
};

}  // namespace Recording
