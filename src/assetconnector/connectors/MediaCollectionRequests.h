#pragma once

#include "assetconnector/connectors/PanelRequests.h"

namespace AC {

/// The requests of the media collection that only its connector handles, or handles in its own way.
extern const Table<RequestRow> kMediaCollectionRequests;

}  // namespace AC
