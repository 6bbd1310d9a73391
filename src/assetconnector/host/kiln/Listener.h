#pragma once

#include "assetconnector/host/Export.h"

namespace Kiln {

class IStations;
class Message;

/// Receives the messages of the stations it is subscribed to (Kiln::StationUtils::AddListener), on
/// whatever thread the host delivers them.
class AC_API Listener
{
public:
    Listener() = default;
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Ends the subscriptions. A class that handles messages itself calls EndSubscriptions first thing in
    /// its own destructor: here its part of the object is gone already.
    virtual ~Listener();

protected:
    /// Called by the host for each message; passes it to the handler. A macro of windows.h has the name
    /// without its last letter, and leaves this one alone.
    virtual void DispatchMessageW(const Message& message);

    /// Handles a message, on the thread that broadcasts it, several at once. It may run as soon as
    /// AddListener is called, before a constructor that calls it is through. What it throws ends the
    /// broadcast and reaches its caller.
    virtual void OnStationMessage(const Message& message) = 0;

    /// Ends every subscription and waits until no other thread is inside a delivery to this object. Calls the
    /// host each time, and does nothing without an installed one.
    void EndSubscriptions() noexcept;

private:
    friend class IStations;  // delivers
};

}  // namespace Kiln
