#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/ImmutableString.h"

namespace Kiln {

class Listener;
class Message;

/// Station messaging: named stations, listeners on them, messages broadcast at once or posted for the
/// user-interface thread. Implemented by the host, called on any thread, several at once, and from inside
/// deliveries. What an operation throws travels untouched to the caller of the connector.
class IStations
{
public:
    virtual ~IStations() = default;

    /// From now on every message that reaches the station is delivered to the listener with Deliver, on
    /// the thread that broadcasts it; that may begin before this call returns.
    /// \throws Anything; the listener is then not subscribed by this call.
    virtual void AddListener(const ferrite::utility::ImmutableString& station, Listener& listener) = 0;

    /// Ends every subscription of the listener. When it returns, no other thread is inside a delivery to
    /// it and none will begin; called from inside a delivery on this thread, it does not wait for that
    /// one. Called again, it does nothing. Called from destructors: it must not throw.
    virtual void EndSubscriptions(Listener& listener) noexcept = 0;

    /// Delivers the message to every listener of the station, in the order of their subscription, before
    /// it returns. The first exception ends it and reaches the caller.
    virtual void BroadcastMessage(const ferrite::utility::ImmutableString& station,
                                  const Message& message) = 0;

    /// Delivers the message later, on the user-interface thread, after everything posted before it. Copies
    /// the message with Message::CreateStationCallback (or Message::Clone) before it returns. What a listener
    /// throws there does not keep back what was posted behind.
    /// \param flag The host's; the library says true for its own station, false for the project's.
    virtual void PostMessageToUIThread(const ferrite::utility::ImmutableString& station,
                                       const Message& message, bool flag) = 0;

protected:
    /// How an implementation hands a message to a listener.
    AC_API static void Deliver(Listener& listener, const Message& message);
};

}  // namespace Kiln
