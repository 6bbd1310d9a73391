#pragma once

#include <cstddef>

namespace Kiln {

/// The host's allocator, for message copies that the host owns. Implemented by the host, called on any
/// thread.
class IMemory
{
public:
    virtual ~IMemory() = default;

    /// \param size Bytes. \return Memory aligned for any fundamental type, or null when there is none.
    virtual void* Allocate(std::size_t size) = 0;

    /// Takes memory back. \param memory From Allocate. \param size The size that it was asked with. Called
    /// from destructors: it must not throw.
    virtual void Dispose(void* memory, std::size_t size) noexcept = 0;
};

}  // namespace Kiln
