#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/ImmutableString.h"
#include "assetconnector/host/kiln/Allocator.h"
#include "assetconnector/host/kiln/MessageTypeID.h"
#include "assetconnector/host/kiln/StationUtils.h"

#include <boost/function.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <cstddef>
#include <cstdint>
#include <new>

/// Station messages. A message is immutable once it is built; listeners tell the classes apart by the
/// identifier alone. A class T derives from MessageImpl<T>, is copyable and names its decorated run-time
/// type in `static constexpr char kTypeName[]`, from which every sender and receiver hashes the same
/// identifier.
namespace Kiln {

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

/// Gives the heap objects of class T, a final one, memory of the host's allocator.
template <class T>
class Allocated
{
public:
    /// \throws std::bad_alloc when the host has no memory.
    static void* operator new(std::size_t size) { return Allocator::AllocateOrThrow(size); }
    static void operator delete(void* memory) { Allocator::Dispose(memory, sizeof(T)); }

    // Arrays would go elsewhere, and their ends here.
    static void* operator new[](std::size_t size) = delete;
    static void operator delete[](void* memory) = delete;
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

/// A deferred delivery, whatever the class of its message.
class AC_API MessageCallback
{
public:
    MessageCallback() = default;
    MessageCallback(const MessageCallback&) = delete;
    MessageCallback& operator=(const MessageCallback&) = delete;
    virtual ~MessageCallback();

    virtual void Run() const = 0;

    /// \return A function that runs the delivery, which its copies share. Made here and not where the message
    ///         is: what such a function is made of would keep a plug-in loaded that was built with default
    ///         options.
    static boost::function<void()> Bind(const boost::shared_ptr<const MessageCallback>& callback);
};

/// One deferred delivery: a copy of the message and where it goes.
template <class T>
class MessageCallbackImpl final : public MessageCallback
{
public:
    MessageCallbackImpl(const T& message, const ferrite::utility::ImmutableString& station)
        : mMessage(message), mStation(station)
    {
    }

    void Run() const override { StationUtils::BroadcastMessage(mStation, mMessage); }

private:
    const T mMessage;
    const ferrite::utility::ImmutableString mStation;
};

template <class T>
class MessageImpl : public Message
{
public:
    /// The identifier of class T.
    static constexpr std::uint32_t TypeID()
    {
        constexpr std::uint32_t kID = HashMessageTypeNameToMessageID(T::kTypeName);
        return kID;
    }

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
        return MessageCallback::Bind(boost::allocate_shared<Callback>(HostAllocator<Callback>(),
                                                                      static_cast<const T&>(*this), station));
    }

protected:
    MessageImpl() noexcept : Message(TypeID()) {}
};

}  // namespace Kiln
