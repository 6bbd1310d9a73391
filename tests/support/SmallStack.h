#pragma once

#include "tests/support/HostTest.h"
#include "tests/support/System.h"

#include <cstddef>
#include <string>

/// As many items within items as a text may hold, two elements each.
constexpr std::size_t kDeepItems = 2047;

/// \return Elements of a message. \param innermost Elements of the innermost item, then of depth 4,096.
inline std::string DeepItems(const std::string& innermost)
{
    return Repeated("<assetItemList><assetItem>", kDeepItems) + innermost +
           Repeated("</assetItem></assetItemList>", kDeepItems);
}

/// Runs the function on a thread with 1 MiB of stack, eight times that where a sanitizer needs more.
template <class Function>
void OnSmallStack(Function function)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(NDEBUG)
    constexpr std::size_t kStack = 8U << 20U;
#else
    constexpr std::size_t kStack = 1U << 20U;
#endif
    const auto run = [](void* argument) { (*static_cast<Function*>(argument))(); };
    ASSERT_TRUE(TestSystem::RunOnStack(kStack, run, &function));
}
