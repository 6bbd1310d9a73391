#include "assetconnector/host/kiln/ReferenceBroker.h"

#include "assetconnector/host/ferrite/Contract.h"

#include <memory>
#include <utility>

namespace Kiln {

void ReferenceBroker::SetObject(KilnUnknown* inObject)
{
    ferrite::utility::RequireInput(inObject != nullptr);
    ferrite::utility::RequireInput(mObject.load() == nullptr);
    // The count first: whoever sees the object must find it countable.
    mCount.store(0);
    mObject.store(inObject, std::memory_order_release);
}

void ReferenceBroker::Release()
{
    if (mCount.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    std::int32_t none = 0;
    if (!mCount.compare_exchange_strong(none, kDestroyed, std::memory_order_acq_rel))
        return;
    delete mObject.exchange(nullptr);
}

InterfaceRef<KilnUnknown> ReferenceBroker::Lock() noexcept
{
    KilnUnknown* const object = GetObject();
    if (object == nullptr)
        return {};
    std::int32_t count = mCount.load(std::memory_order_relaxed);
    while (count > 0)
        if (mCount.compare_exchange_weak(count, count + 1, std::memory_order_acq_rel))
            return InterfaceRef<KilnUnknown>::Adopt(object);
    return {};
}

SharedReferenceBroker::SharedReferenceBroker()
{
    auto broker = std::make_unique<ReferenceBroker>();
    mShareCount = new std::atomic<std::int32_t>(1);
    mBroker = broker.release();
}

SharedReferenceBroker::SharedReferenceBroker(const SharedReferenceBroker& other) noexcept
    : mShareCount(other.mShareCount), mBroker(other.mBroker)
{
    mShareCount->fetch_add(1, std::memory_order_relaxed);
}

SharedReferenceBroker& SharedReferenceBroker::operator=(const SharedReferenceBroker& other) noexcept
{
    SharedReferenceBroker copy(other);
    std::swap(mShareCount, copy.mShareCount);
    std::swap(mBroker, copy.mBroker);
    return *this;
}

SharedReferenceBroker::~SharedReferenceBroker()
{
    if (mShareCount->fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    delete mBroker;
    delete mShareCount;
}

}  // namespace Kiln
