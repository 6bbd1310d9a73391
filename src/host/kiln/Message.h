#pragma once

#include "host/Host.h"
#include "host/kiln/Allocator.h"
#include "host/kiln/MessageTypeID.h"

#include <boost/function.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <cstdint>
#include <new>

/// Station messages. A message is immutable once it is built; listeners tell the classes apart by the
/// identifier alone. A class T derives from MessageImpl<T>, is copyable and names its decorated run-time
/// type in `static constexpr char kTypeName[]`, from which every sender and receiver hashes the same
/// identifier.
namespace Kiln {

namespace StationUtils {

/// See Kiln::IStations::BroadcastMessage. Declared here for the deferred delivery below.
inline void BroadcastMessage(const ferrite::utility::ImmutableString& station, const Message& message)
{
    AC::InstalledHost().stations.BroadcastMessage(station, message);
}

}  // namespace StationUtils

class Message
{
public:
    virtual ~Message() = default;
    Message& operator=(const Message&) = delete;

    /// \return A copy in memory of the host's allocator, owned by the caller, who deletes it through this
    ///         base; null when the allocator gives none. Throws what copying the payload throws.
    virtual Message* Clone() const = 0;

    /// \return A function that broadcasts a copy of this message on the station, as often as it is called.
    ///         Copies of the function share the message; the last one destroys it.
    /// \throws std::bad_alloc; what copying the payload throws.
    virtual boost::function<void()> CreateStationCallback(
        const ferrite::utility::ImmutableString& station) const = 0;

    std::uint32_t MessageTypeID() const noexcept { return mMessageTypeID; }

protected:
    explicit Message(std::uint32_t messageTypeID) noexcept : mMessageTypeID(messageTypeID) {}
    Message(const Message&) = default;

private:
    std::uint32_t mMessageTypeID;
};

/// Marks what the host counts by class; it adds nothing that the library uses.
template <class T>
class ClassWatcherTrackable
{
};

/// Gives the heap objects of class T memory of the host's allocator. Whoever constructs one gets the
/// memory from Allocator::Allocate; destruction through `delete` gives it back.
template <class T>
class Allocated
{
public:
    static void operator delete(void* memory, std::size_t size) { Allocator::Dispose(memory, size); }
};

/// The class of the heap copies that Clone makes.
template <class T>
class DynamicallyAllocatedMessage final : public T,
                                          public ClassWatcherTrackable<T>,
                                          public Allocated<DynamicallyAllocatedMessage<T>>
{
public:
    explicit DynamicallyAllocatedMessage(const T& message) : T(message) {}
};

/// One deferred delivery: a copy of the message and where it goes.
template <class T>
class MessageCallbackImpl
{
public:
    MessageCallbackImpl(const T& message, const ferrite::utility::ImmutableString& station)
        : mMessage(message), mStation(station)
    {
    }

    void Run() const { StationUtils::BroadcastMessage(mStation, mMessage); }

private:
    T mMessage;
    ferrite::utility::ImmutableString mStation;
};

template <class T>
class MessageImpl : public Message
{
public:
    /// The identifier of class T.
    static constexpr std::uint32_t TypeID() { return HashMessageTypeNameToMessageID(T::kTypeName); }

    Message* Clone() const override
    {
        using Copy = DynamicallyAllocatedMessage<T>;
        static_assert(alignof(Copy) <= alignof(std::max_align_t));
        void* const memory = Allocator::Allocate(sizeof(Copy));
        if (memory == nullptr)
            return nullptr;
        try {
            return ::new (memory) Copy(static_cast<const T&>(*this));
        } catch (...) {
            Allocator::Dispose(memory, sizeof(Copy));
            throw;
        }
    }

    boost::function<void()> CreateStationCallback(
        const ferrite::utility::ImmutableString& station) const override
    {
        using Callback = MessageCallbackImpl<T>;
        const boost::shared_ptr<const Callback> callback = boost::allocate_shared<Callback>(
            HostAllocator<Callback>(), static_cast<const T&>(*this), station);
        return [callback] { callback->Run(); };
    }

protected:
    MessageImpl() noexcept : Message(TypeID()) {}
};

}  // namespace Kiln
