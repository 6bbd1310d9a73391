#include "reference_host/Memory.h"

#include <algorithm>
#include <cstdlib>

namespace ReferenceHost {

void* Memory::Allocate(std::size_t size)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    if (mAllocationsLeft == 0)
        return nullptr;
    void* const memory = std::malloc(std::max<std::size_t>(size, 1));
    if (memory == nullptr)
        return nullptr;
    if (mAllocationsLeft != kUnlimited)
        --mAllocationsLeft;
    ++mLiveBlocks;
    mLiveBytes += size;
    return memory;
}

void Memory::Dispose(void* memory, std::size_t size) noexcept
{
    if (memory == nullptr)
        return;
    const std::lock_guard<std::mutex> lock(mMutex);
    std::free(memory);
    --mLiveBlocks;
    mLiveBytes -= size;
}

void Memory::SetAllocationsLeft(std::size_t count)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mAllocationsLeft = count;
}

std::size_t Memory::LiveBlocks() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mLiveBlocks;
}

std::size_t Memory::LiveBytes() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mLiveBytes;
}

}  // namespace ReferenceHost
