#pragma once

#include "assetconnector/connectors/EventCatalogue.h"

#include <array>
#include <string_view>

namespace Protocol {

/// What events are for, as far as code cannot tell it: a row for each, in the order of the catalogue. What
/// connectors do with it is measured.
struct EventFact
{
    std::string_view constant;
    const char* family;
    const char* since;
    const char* about;
    // Of requests. Names are those behind "kPlexaEventType_", or "kPlexaEventType_Notification" of
    // notifications, separated by blanks.
    const char* answers = "";
    const char* progress = "";
    const char* cancel = "";
    const char* ends = "";   ///< Of progress, where it is not the answer that ends the work.
    const char* after = "";  ///< The callback that answers, where others send the same notifications.
};

extern const std::array<EventFact, AC::kRequestCount + AC::kNotificationCount> kEventFacts;

}  // namespace Protocol
