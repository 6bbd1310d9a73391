#pragma once

#include "assetconnector/host/Host.h"

#include <cstddef>
#include <new>

namespace Kiln {

/// The host's allocator under its own names; see Kiln::IMemory.
class Allocator
{
public:
    /// \throws std::logic_error without an installed host.
    static void* Allocate(std::size_t size) { return AC::InstalledHost().memory.Allocate(size); }

    /// \throws std::bad_alloc when the host has no memory; as Allocate.
    static void* AllocateOrThrow(std::size_t size)
    {
        void* const memory = Allocate(size);
        if (memory == nullptr)
            throw std::bad_alloc();
        return memory;
    }

    /// Without an installed host the memory is lost: its allocator went away before its last block.
    static void Dispose(void* memory, std::size_t size) noexcept
    {
        if (const AC::HostServices* host = AC::FindHost())
            host->memory.Dispose(memory, size);
    }
};

/// The host's allocator as an allocator of the standard library.
template <class T>
struct HostAllocator
{
    using value_type = T;

    HostAllocator() = default;
    template <class U>
    HostAllocator(const HostAllocator<U>& /*other*/) noexcept
    {
    }

    /// \throws std::bad_alloc when the host has no memory.
    T* allocate(std::size_t count)
    {
        static_assert(alignof(T) <= alignof(std::max_align_t));
        return static_cast<T*>(Allocator::AllocateOrThrow(count * sizeof(T)));
    }

    void deallocate(T* memory, std::size_t count) noexcept { Allocator::Dispose(memory, count * sizeof(T)); }

    template <class U>
    friend bool operator==(const HostAllocator& /*a*/, const HostAllocator<U>& /*b*/) noexcept
    {
        return true;
    }
    template <class U>
    friend bool operator!=(const HostAllocator& /*a*/, const HostAllocator<U>& /*b*/) noexcept
    {
        return false;
    }
};

}  // namespace Kiln
