#pragma once

#include "assetconnector/host/Host.h"

/// Station messaging under its own names; each forwards to Kiln::IStations, where arguments, threads and
/// exceptions are stated. All throw std::logic_error without an installed host. Listener and message are
/// declared in Listener.h and Message.h.
namespace Kiln::StationUtils {

/// \param listener Not null; its destructor ends the subscription.
inline void AddListener(const ferrite::utility::ImmutableString& station, Listener* listener)
{
    AC::InstalledHost().stations.AddListener(station, *listener);
}

inline void BroadcastMessage(const ferrite::utility::ImmutableString& station, const Message& message)
{
    AC::InstalledHost().stations.BroadcastMessage(station, message);
}

inline void PostMessageToUIThread(const ferrite::utility::ImmutableString& station, const Message& message,
                                  bool flag)
{
    AC::InstalledHost().stations.PostMessageToUIThread(station, message, flag);
}

}  // namespace Kiln::StationUtils
