#pragma once

#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/kiln/KilnUnknown.h"

#include <atomic>
#include <cstdint>

namespace ReferenceHost {

/// What a simple counted object needs: Interface is KilnUnknown or derived from it. The object is made with
/// `new`, held by Kiln::InterfaceRef and destroyed by its last release; it offers no other interface.
/// Counting is safe on any thread.
template <class Interface>
class Counted : public Interface
{
public:
    void AddRef() override { mCount.fetch_add(1, std::memory_order_relaxed); }

    void Release() override
    {
        if (mCount.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

    std::int32_t QueryInterface(const ferrite::utility::Guid& /*interfaceID*/, void*& out) override
    {
        out = nullptr;
        return KilnUnknown::kNoInterface;
    }

    KilnUnknown* GetRawPointer() override { return this; }

private:
    std::atomic<std::int32_t> mCount{0};
};

}  // namespace ReferenceHost
