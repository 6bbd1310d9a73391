#pragma once

#include "assetconnector/connectors/ConnectorFrame.h"

#include <boost/shared_ptr.hpp>

#include <atomic>

namespace AC {

/// The connector of the library panel. Tells the panel of everything that happens to tasks and assets and
/// hands its requests to the dispatcher. Threads: see ConnectorFrame.
class AC_API_PARTS IngestGlintLibraryConnector final : public ConnectorFrame
{
public:
    AC_API ~IngestGlintLibraryConnector() override;

    /// \return Whether this connector acts on the request, or sends the notification, of the identifier.
    AC_API static bool Handles(const UTF16String& identifier);

private:
    friend class ConnectorFactory;

    AC_LOCAL IngestGlintLibraryConnector();

    AC_LOCAL void OnPanelRequest(const UTF16String& type, const UTF16String& data) override;
    AC_LOCAL void Report(const ImportXMPReport& report) override;
    AC_LOCAL void Report(const ReadXMPReport& report) override;

    /// The last XMP request was ReadXMPFromDisk, not ImportXMP: chooses the notification of what is reported
    /// next. Read once per callback, when its record is filled. Shared with requests and callbacks under way,
    /// which may outlive the connector.
    const boost::shared_ptr<std::atomic<bool>> mReadFromDisk;
};

/// Makes the library panel's connector, subscribed to the panel services station.
/// \param dispatcher The host's, which keeps it alive as IAssetLibraryDispatcher says; null: nothing is
///                   forwarded until SetDispatcher.
/// \return A counted reference; the last one destroys the connector.
/// \throws Kiln::NullInterfaceException without memory for the connector, std::bad_alloc without memory for
///         what it holds; std::logic_error without an installed host; what the host throws while the
///         connector subscribes. No connector is left then.
AC_API Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> CreateIngestGlintLibraryConnector(
    ALD::IAssetLibraryDispatcher* dispatcher);

}  // namespace AC
