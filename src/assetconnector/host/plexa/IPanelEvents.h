#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"

#include <string>

namespace Plexa {

/// The panel event manager. Implemented by the host, called by the library on whatever thread called the
/// library; several threads may call at once, and from inside the delivery of an event or a notification.
/// What an operation throws travels untouched to the caller of the connector, and nothing is sent afterwards;
/// what a panel or a listener throws keeps no later event or notification back.
class IPanelEvents
{
public:
    virtual ~IPanelEvents() = default;

    /// From now on each panel event of this type is broadcast on the panel services station
    /// (Ridge::GetPlexaStationID) as a Ridge::TandemEvent, once however often its type is registered, in the
    /// order in which they were raised.
    /// \param callback Null at every call of the library.
    virtual void AddTandemEventListener(const UTF16String& type, void* callback) = 0;

    /// Ends what AddTandemEventListener began; for a type that is not registered nothing happens.
    virtual void RemoveTandemEventListener(const UTF16String& type, void* callback) = 0;

    /// Delivers a notification to the panels. No answer is expected.
    /// \param type The identifier, UTF-8. \param data The XML text, UTF-8; some megabytes for a large
    /// library.
    virtual void DispatchApplicationEvent(const std::string& type, const std::string& data) = 0;

    /// \return The id of the current panel, UTF-8. Asked anew for each notification that carries it.
    virtual std::string GetBrowserID() = 0;
};

}  // namespace Plexa
