#pragma once

#include "assetconnector/connectors/PanelRequests.h"

namespace AC {

/// The requests of the media collection that only its connector handles, or handles in its own way.
extern const RequestTable kMediaCollectionRequests;

/// Checks sources and destination, tells the panel what was found, and starts the ingest where the first
/// source is usable.
void IngestMedia(const RequestCall& call);

}  // namespace AC
