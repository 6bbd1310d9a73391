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
    bool (*isOfClass)(const Kiln::Listener& listener);
};

template <class Connector>
bool IsOfClass(const Kiln::Listener& listener)
{
    return dynamic_cast<const Connector*>(&listener) != nullptr;
}

constexpr ConnectorKind kConnectorKinds[] = {
    {"library", "library connector", &AC::CreateIngestGlintLibraryConnector,
     &AC::IngestGlintLibraryConnector::Handles, &IsOfClass<AC::IngestGlintLibraryConnector>},
    {"mediaCollection", "media collection connector", &AC::CreateIngestMediaCollectionConnector,
     &AC::IngestMediaCollectionConnector::Handles, &IsOfClass<AC::IngestMediaCollectionConnector>},
};

}  // namespace Session
