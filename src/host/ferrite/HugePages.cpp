#include "host/ferrite/HugePages.h"

#ifdef __linux__
#include <sys/mman.h>
#endif

#include <cstdint>

namespace ferrite::utility {

#if defined(__linux__) && defined(MADV_HUGEPAGE)

void PreferHugePages(void* begin, std::size_t size) noexcept
{
    constexpr std::size_t kHugePage = std::size_t{2} << 20U;
    if (size < 2 * kHugePage)  // it may not hold an aligned one
        return;
    const std::size_t before = (kHugePage - reinterpret_cast<std::uintptr_t>(begin) % kHugePage) % kHugePage;
    const std::size_t whole = (size - before) / kHugePage * kHugePage;
    madvise(static_cast<char*>(begin) + before, whole, MADV_HUGEPAGE);  // when it fails, pages are small
}

#else

void PreferHugePages(void* /*begin*/, std::size_t /*size*/) noexcept {}

#endif

}  // namespace ferrite::utility
