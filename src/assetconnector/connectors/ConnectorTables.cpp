#include "assetconnector/connectors/ConnectorTables.h"

namespace AC {

bool HandlesEvent(const ConnectorTables& tables, const UTF16String& identifier)
{
    for (const CallbackRow& row : tables.callbacks)
        for (const UTF16String* notification : {row.notification, row.notificationFromDisk})
            if (notification != nullptr && *notification == identifier)
                return true;
    return HandlesRequestOrReply(tables.requests, identifier);
}

}  // namespace AC
