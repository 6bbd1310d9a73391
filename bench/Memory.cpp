// Counts what operator new hands out, in the XML libraries written in C++ too, while PeakBytes runs.

#include "bench/Codec.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<bool> counting{false};
std::atomic<std::ptrdiff_t> held{0};
std::ptrdiff_t peak = 0;

void Count(std::ptrdiff_t bytes)
{
    peak = std::max(peak, held += bytes);
}

}  // namespace

void* operator new(std::size_t size)
{
    void* const memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    if (counting.load(std::memory_order_relaxed))
        Count(static_cast<std::ptrdiff_t>(malloc_usable_size(memory)));
    return memory;
}

void operator delete(void* memory) noexcept
{
    if (counting.load(std::memory_order_relaxed))
        Count(-static_cast<std::ptrdiff_t>(malloc_usable_size(memory)));
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

namespace Bench {

std::size_t PeakBytes(const Operation& operation)
{
    held = 0;
    peak = 0;
    counting = true;
    operation();
    counting = false;
    return static_cast<std::size_t>(peak);
}

}  // namespace Bench
