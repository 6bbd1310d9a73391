#pragma once

#include "assetconnector/host/kiln/IMemory.h"

#include <limits>
#include <mutex>

namespace ReferenceHost {

/// Memory from the C library, counted. Any thread.
class Memory : public Kiln::IMemory
{
public:
    static constexpr std::size_t kUnlimited = (std::numeric_limits<std::size_t>::max)();  // may be a macro

    void* Allocate(std::size_t size) override;
    void Dispose(void* memory, std::size_t size) noexcept override;

    /// Lets the host run out of memory: from now on so many allocations succeed, every one after them gives
    /// null. \param count kUnlimited ends that.
    void SetAllocationsLeft(std::size_t count);

    /// \return How many blocks are allocated and not yet disposed of.
    std::size_t LiveBlocks() const;

    /// \return The bytes that these were asked with.
    std::size_t LiveBytes() const;

private:
    mutable std::mutex mMutex;
    std::size_t mAllocationsLeft = kUnlimited;
    std::size_t mLiveBlocks = 0;
    std::size_t mLiveBytes = 0;
};

}  // namespace ReferenceHost
