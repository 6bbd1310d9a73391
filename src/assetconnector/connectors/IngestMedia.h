#pragma once

#include "assetconnector/connectors/PanelRequests.h"

namespace AC {

/// Checks sources and destination, tells the panel what was found, and starts the ingest where the first
/// source is usable.
void IngestMedia(const RequestCall& call);

}  // namespace AC
