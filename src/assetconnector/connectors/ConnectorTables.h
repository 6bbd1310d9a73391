#pragma once

#include "assetconnector/connectors/CallbackTable.h"
#include "assetconnector/connectors/PanelRequests.h"
#include "assetconnector/connectors/Table.h"
#include "assetconnector/host/ferrite/ImmutableString.h"

namespace AC {

/// Gives the name of a station. A function, since names are built when the library is loaded.
using StationName = ferrite::utility::ImmutableString (*)();

/// What a connector is: one constant, of static storage.
struct ConnectorTables
{
    CallbackTable callbacks;
    const Table<RequestRow>& requests;  ///< Its own, before those that both connectors handle alike.
    Table<StationName> stations;        ///< Where it listens, in the order of subscription.
};

inline const CallbackRow& RowOf(const ConnectorTables& tables, Callback callback)
{
    return tables.callbacks[static_cast<std::size_t>(callback)];
}

/// \return Whether a connector of these tables acts on the request, or sends the notification, of the
///         identifier.
bool HandlesEvent(const ConnectorTables& tables, const UTF16String& identifier);

}  // namespace AC
