#pragma once

#include "assetconnector/host/kiln/IMemory.h"

#include <atomic>

namespace Conformance {

/// Stands in front of the host's memory and counts the blocks that the library holds.
class CountedMemory : public Kiln::IMemory
{
public:
    explicit CountedMemory(Kiln::IMemory& next) : mNext(next) {}

    void* Allocate(std::size_t size) override
    {
        void* const memory = mNext.Allocate(size);
        if (memory != nullptr)
            ++mLiveBlocks;
        return memory;
    }

    void Dispose(void* memory, std::size_t size) noexcept override
    {
        mNext.Dispose(memory, size);
        if (memory == nullptr)
            return;
        // Blocks that were left when an earlier object ended do not count. Nothing is used behind this.
        std::size_t live = mLiveBlocks;
        while (live != 0 && !mLiveBlocks.compare_exchange_weak(live, live - 1)) {
        }
    }

    std::size_t LiveBlocks() const noexcept { return mLiveBlocks; }

private:
    Kiln::IMemory& mNext;
    std::atomic<std::size_t> mLiveBlocks{0};
};

}  // namespace Conformance
