#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"

#include <array>
#include <cstddef>

/// Every event that panels and host exchange. The identifiers cross the wire and must not change, odd
/// spellings included. They are built when the library is loaded and stay until it is unloaded.
namespace AC {

#define AC_EVENT(CONSTANT, IDENTIFIER, KIND) AC_API extern const UTF16String CONSTANT;
#include "assetconnector/connectors/EventCatalogue.def"
#undef AC_EVENT

enum class EventKind
{
    kRequest,       ///< Raised by a panel, received by the host.
    kNotification,  ///< Dispatched by the host to a panel.
};

struct EventEntry
{
    const char* constant;           ///< Such as "kPlexaEventType_ImportXMP".
    const UTF16String* identifier;  ///< The constant of that name.
    EventKind kind;
};

constexpr std::size_t kRequestCount = 44;
constexpr std::size_t kNotificationCount = 67;

/// \return All events in the order of their declaration, requests first. Any thread.
AC_API const std::array<EventEntry, kRequestCount + kNotificationCount>& EventCatalogue();

/// Registers every request with the panel event manager, in the catalogue's order, each with a null
/// callback. Called twice, it registers twice.
/// \throws std::logic_error without an installed host; what the host throws, the rest then unregistered.
AC_API void AddTandemEvents();

/// Withdraws every request in the same order, registered or not.
/// \throws As AddTandemEvents.
AC_API void RemoveTandemEvents();

}  // namespace AC
