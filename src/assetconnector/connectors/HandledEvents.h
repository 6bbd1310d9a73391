#pragma once

#include "assetconnector/connectors/CallbackTable.h"
#include "assetconnector/connectors/PanelRequests.h"

namespace AC {

/// \return Whether a connector of these tables acts on the request, or sends the notification, of the
///         identifier.
inline bool HandlesEvent(const CallbackTable& callbacks, const RequestTable& requests,
                         const UTF16String& identifier)
{
    for (const CallbackRow& row : callbacks)
        for (const UTF16String* notification : {row.notification, row.notificationFromDisk})
            if (notification != nullptr && *notification == identifier)
                return true;
    return HandlesRequestOrReply(requests, identifier);
}

}  // namespace AC
