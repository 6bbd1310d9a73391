#pragma once

#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"

#include <string_view>

namespace Session {

/// A connector as session files name it.
struct ConnectorKind
{
    std::string_view name;
    std::string_view title;  ///< For people.
    Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> (*create)(ALD::IAssetLibraryDispatcher* dispatcher);
    bool (*handles)(const UTF16String& identifier);
};

constexpr ConnectorKind kConnectorKinds[] = {
    {"library", "library connector", &AC::CreateIngestGlintLibraryConnector,
     &AC::IngestGlintLibraryConnector::Handles},
    {"mediaCollection", "media collection connector", &AC::CreateIngestMediaCollectionConnector,
     &AC::IngestMediaCollectionConnector::Handles},
};

}  // namespace Session
