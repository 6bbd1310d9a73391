#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/kiln/KilnUnknown.h"

#include <atomic>
#include <cstdint>

#pragma push_macro("GetObject")  // of windows.h, for as long as this header needs the name
#undef GetObject

namespace Kiln {

/// Holds an object's reference count apart from the object, so that holders of a broker handle can tell
/// whether the object still exists. All operations are safe on any thread that holds a handle to the broker
/// throughout the call.
class AC_API ReferenceBroker
{
public:
    ReferenceBroker() = default;
    ReferenceBroker(const ReferenceBroker&) = delete;
    ReferenceBroker& operator=(const ReferenceBroker&) = delete;

    /// Binds the broker to its object and sets the count to 0.
    /// \throws ferrite::utility::ContractError when inObject is null or an object is bound already.
    void SetObject(KilnUnknown* inObject);

    /// \return The object; null before it is bound and once it is destroyed.
    KilnUnknown* GetObject() const noexcept { return mObject.load(std::memory_order_acquire); }

    /// What windows.h makes of GetObject in the code of a host.
    KilnUnknown* GetObjectA() const noexcept { return GetObject(); }
    KilnUnknown* GetObjectW() const noexcept { return GetObject(); }

    std::int32_t GetCount() const noexcept { return mCount.load(std::memory_order_relaxed); }

    void AddRef() noexcept { mCount.fetch_add(1, std::memory_order_relaxed); }

    /// The last release deletes the object, unless somebody called AddRef in between.
    void Release();

    /// \return A counted reference while somebody holds one, else null: before the first reference, when a
    ///         release would destroy an object that is still being made, and after the last.
    InterfaceRef<KilnUnknown> Lock() noexcept;

    /// What the count becomes when the object goes, far from anything that AddRef could bring back.
    AC_CONSTANT static constexpr std::int32_t kDestroyed = -10000;

private:
    std::atomic<KilnUnknown*> mObject{nullptr};
    std::atomic<std::int32_t> mCount{0};
};

/// A shared handle to a broker: the broker lives as long as its last handle. Distinct handles may be used
/// on distinct threads.
class AC_API SharedReferenceBroker
{
public:
    /// A new broker; this is its first handle.
    /// \throws std::bad_alloc
    SharedReferenceBroker();
    SharedReferenceBroker(const SharedReferenceBroker& other) noexcept;
    SharedReferenceBroker& operator=(const SharedReferenceBroker& other) noexcept;
    ~SharedReferenceBroker();

    ReferenceBroker& operator*() const noexcept { return *mBroker; }
    ReferenceBroker* operator->() const noexcept { return mBroker; }

    /// See ReferenceBroker::Lock.
    InterfaceRef<KilnUnknown> Lock() const noexcept { return mBroker->Lock(); }

private:
    std::atomic<std::int32_t>* mShareCount;
    ReferenceBroker* mBroker;
};

}  // namespace Kiln

#pragma pop_macro("GetObject")
