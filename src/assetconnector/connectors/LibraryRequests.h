#pragma once

#include "assetconnector/connectors/PanelRequests.h"

#include <atomic>

namespace AC {

/// What the rows of kLibraryRequests are called with.
struct LibraryRequestCall : RequestCall
{
    std::atomic<bool>& readFromDisk;  ///< The connector's; may outlive it.
};

/// The requests of the library panel that only its connector handles, or handles in its own way.
extern const Table<RequestRow> kLibraryRequests;

}  // namespace AC
