#pragma once

#include "assetconnector/host/Host.h"

/// The panel event manager under its own names; each forwards to Plexa::IPanelEvents, where arguments,
/// threads and exceptions are stated. All throw std::logic_error without an installed host.
namespace PlexaManager {

inline void AddTandemEventListener(const UTF16String& type, void* callback)
{
    AC::InstalledHost().panelEvents.AddTandemEventListener(type, callback);
}

inline void RemoveTandemEventListener(const UTF16String& type, void* callback)
{
    AC::InstalledHost().panelEvents.RemoveTandemEventListener(type, callback);
}

inline void DispatchApplicationEvent(const std::string& type, const std::string& data)
{
    AC::InstalledHost().panelEvents.DispatchApplicationEvent(type, data);
}

inline std::string GetBrowserID()
{
    return AC::InstalledHost().panelEvents.GetBrowserID();
}

}  // namespace PlexaManager
