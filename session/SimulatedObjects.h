#pragma once

#include "assetconnector/host/kiln/InterfaceRef.h"
#include "reference_host/Counted.h"
#include "session/format/ValueWriter.h"

#include <string>
#include <utility>

namespace Session {

/// The object behind a counted reference in a session: nothing but a name.
class NamedObject final : public ReferenceHost::Counted<KilnUnknown>
{
public:
    static Kiln::InterfaceRef<KilnUnknown> Make(std::string name)
    {
        return Kiln::InterfaceRef<KilnUnknown>::Retain(new NamedObject(std::move(name)));
    }

    const std::string& Name() const noexcept { return mName; }

private:
    explicit NamedObject(std::string name) : mName(std::move(name)) {}

    const std::string mName;
};

/// The objects of the simulated host, which are of the reference host's classes.
class SimulatedObjects final : public HostObjects
{
public:
    /// \return A writer of values with such objects.
    static ValueWriter WriterFor(Style style);

    /// \return False for an info of another class.
    std::optional<bool> NeedSavePreCheck(const Ridge::AssetMediaInfo& info) const override;
    std::optional<std::string> NameOf(const KilnUnknown& object) const override;
    UTF16String PropertyXMLOf(const Keel::IMarker& marker) const override;
};

}  // namespace Session
