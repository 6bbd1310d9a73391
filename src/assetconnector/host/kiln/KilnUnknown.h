#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/Guid.h"

#include <cstdint>

/// Base of the host's counted interfaces. The order of its operations crosses the binary boundary and
/// must not change.
class KilnUnknown
{
public:
    /// Takes a reference. Any thread. Use Kiln::InterfaceRef instead of calling it by hand.
    virtual void AddRef() = 0;

    /// Drops a reference; the last one destroys the object. Any thread.
    virtual void Release() = 0;

    virtual ~KilnUnknown() = default;

    /// Asks for another interface of the object. Takes no reference: the caller does.
    /// \param out Receives the interface, to be cast from void* to exactly the interface of the
    ///            identifier; null when the object does not offer it.
    /// \return 0, or kNoInterface.
    virtual std::int32_t QueryInterface(const ferrite::utility::Guid& interfaceID, void*& out) = 0;

    /// \return The object's own interface pointer, without a reference.
    virtual KilnUnknown* GetRawPointer() = 0;

    /// 0xA00A0001: the object does not offer the interface.
    AC_CONSTANT static constexpr auto kNoInterface = static_cast<std::int32_t>(0xA00A0001U);
};
