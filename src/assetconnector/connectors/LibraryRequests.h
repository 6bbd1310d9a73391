#pragma once

#include "assetconnector/connectors/PanelRequests.h"

namespace AC {

/// The requests of the library panel that only its connector handles, or handles in its own way.
extern const RequestTable kLibraryRequests;

}  // namespace AC
