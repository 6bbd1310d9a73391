#include "assetconnector/connectors/EventCatalogue.h"

#include "assetconnector/connectors/Distinct.h"
#include "assetconnector/host/plexa/PlexaManager.h"

#include <string_view>

namespace AC {

#define AC_EVENT(CONSTANT, IDENTIFIER, KIND) const UTF16String CONSTANT = IDENTIFIER;
#include "assetconnector/connectors/EventCatalogue.def"
#undef AC_EVENT

namespace {

constexpr std::array kCatalogue{
#define AC_EVENT(CONSTANT, IDENTIFIER, KIND) EventEntry{#CONSTANT, &CONSTANT, EventKind::KIND},
#include "assetconnector/connectors/EventCatalogue.def"
#undef AC_EVENT
};

constexpr std::size_t Count(EventKind kind)
{
    std::size_t count = 0;
    for (const EventEntry& entry : kCatalogue)
        count += entry.kind == kind ? 1 : 0;
    return count;
}

constexpr bool RequestsComeFirst()
{
    for (std::size_t i = 0; i < kCatalogue.size(); ++i)
        if ((kCatalogue[i].kind == EventKind::kRequest) != (i < kRequestCount))
            return false;
    return true;
}

constexpr std::array kIdentifiers{
#define AC_EVENT(CONSTANT, IDENTIFIER, KIND) std::u16string_view(IDENTIFIER),
#include "assetconnector/connectors/EventCatalogue.def"
#undef AC_EVENT
};
static_assert(AreDistinct(kIdentifiers), "two events have the same identifier");
static_assert(Count(EventKind::kRequest) == kRequestCount);
static_assert(Count(EventKind::kNotification) == kNotificationCount);
static_assert(RequestsComeFirst(), "a request stands behind a notification");

template <class Action>
void ForEachRequest(Action action)
{
    for (const EventEntry& entry : kCatalogue)
        if (entry.kind == EventKind::kRequest)
            action(*entry.identifier);
}

}  // namespace

const std::array<EventEntry, kRequestCount + kNotificationCount>& EventCatalogue()
{
    return kCatalogue;
}

void AddTandemEvents()
{
    ForEachRequest([](const UTF16String& type) { PlexaManager::AddTandemEventListener(type, nullptr); });
}

void RemoveTandemEvents()
{
    ForEachRequest([](const UTF16String& type) { PlexaManager::RemoveTandemEventListener(type, nullptr); });
}

}  // namespace AC
