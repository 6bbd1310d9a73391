#pragma once

#include "assetconnector/connectors/ConnectorFrame.h"
#include "assetconnector/host/ferrite/ImmutableString.h"

namespace AC {

/// The connector of the media collection. Tells its panel by notifications and the host's components by
/// station messages (StationMessages.h), and carries the panel's requests out or hands them to the
/// dispatcher. Threads: see ConnectorFrame. A message is posted before the notification of the same event is
/// sent.
class AC_API_PARTS IngestMediaCollectionConnector final : public ConnectorFrame
{
public:
    AC_API ~IngestMediaCollectionConnector() override;

    /// \return Whether this connector acts on the request, or sends the notification, of the identifier.
    AC_API static bool Handles(const UTF16String& identifier);

private:
    friend class ConnectorFactory;

    AC_LOCAL IngestMediaCollectionConnector();

    AC_LOCAL void Report(const ImportXMPReport& report) override;
    AC_LOCAL void Report(const ReadXMPReport& report) override;
};

/// Makes the media collection's connector, subscribed to its own station and then to the panel services
/// station. Arguments, result and errors are those of CreateIngestGlintLibraryConnector.
AC_API Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> CreateIngestMediaCollectionConnector(
    ALD::IAssetLibraryDispatcher* dispatcher);

/// \return "AC.Station.MCAssetConnector": where host components listen for the connector's station messages.
///         Any thread.
AC_API ferrite::utility::ImmutableString GetMCAssetConnectorStation();

}  // namespace AC
