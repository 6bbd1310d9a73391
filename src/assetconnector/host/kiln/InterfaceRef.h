#pragma once

#include <utility>

namespace Kiln {

/// A counted reference to an object behind interface T (KilnUnknown or derived); may be null. Distinct
/// references may be used on distinct threads; one reference belongs to one thread at a time.
template <class T>
class InterfaceRef
{
public:
    InterfaceRef() = default;

    /// \return A reference that takes over one count which the caller already holds.
    static InterfaceRef Adopt(T* object) noexcept
    {
        InterfaceRef ref;
        ref.mObject = object;
        return ref;
    }

    /// \return A reference with a count of its own; null stays null.
    static InterfaceRef Retain(T* object)
    {
        if (object != nullptr)
            object->AddRef();
        return Adopt(object);
    }

    InterfaceRef(const InterfaceRef& other) : InterfaceRef(Retain(other.mObject)) {}
    InterfaceRef(InterfaceRef&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
    InterfaceRef& operator=(InterfaceRef other) noexcept
    {
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~InterfaceRef() { Clear(); }

    /// Drops the reference. The object may be destroyed here; this reference is null before that.
    void Clear()
    {
        if (T* const object = std::exchange(mObject, nullptr))
            object->Release();
    }

    T* Get() const noexcept { return mObject; }
    T* operator->() const noexcept { return mObject; }
    explicit operator bool() const noexcept { return mObject != nullptr; }

    friend bool operator==(const InterfaceRef& a, const InterfaceRef& b) noexcept
    {
        return a.mObject == b.mObject;
    }
    friend bool operator!=(const InterfaceRef& a, const InterfaceRef& b) noexcept { return !(a == b); }

private:
    T* mObject = nullptr;
};

}  // namespace Kiln
