#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/Version.h"
#include "assetconnector/host/ferrite/ITexts.h"
#include "assetconnector/host/kiln/IFiles.h"
#include "assetconnector/host/kiln/IMemory.h"
#include "assetconnector/host/kiln/IStations.h"
#include "assetconnector/host/plexa/IPanelEvents.h"
#include "assetconnector/host/ridge/IIngestLibrary.h"

/// How a host makes itself known to the library. The functions that the library calls by the host's own
/// names (PlexaManager::DispatchApplicationEvent, Kiln::StationUtils::AddListener, ...) forward to the
/// services of the installed table. Before it installs itself, the host initialises the XML platform
/// (XMLPlatform.h), which stays until the last connector is gone.
namespace AC {

/// One table of references; the services belong to the host and outlive the installation. It never grows:
/// what is new is a second table, handed over by a function of its own.
struct HostServices
{
    Plexa::IPanelEvents& panelEvents;
    Kiln::IStations& stations;
    Ridge::IIngestLibrary& ingestLibrary;
    Kiln::IFiles& files;
    ferrite::ITexts& texts;
    Kiln::IMemory& memory;
};

/// Installs the host, before anything of the library is used. The table is copied.
/// Call it while no other thread uses the library.
/// \param interfaceVersion Left to its default, which is that of the headers that the host was built with.
/// \throws std::logic_error when the library has another, a host is installed already, which stays, or
///         the XML platform is not initialised.
AC_API void InstallHost(const HostServices& services, std::uint32_t interfaceVersion = kInterfaceVersion);

/// Takes the host out. No connector, record or message of the library may be alive, on any thread.
/// Without an installed host nothing happens.
AC_API void UninstallHost() noexcept;

/// \return The installed table. Any thread.
/// \throws std::logic_error when none is installed.
AC_API const HostServices& InstalledHost();

/// \return The installed table, or null: for destructors, which must not throw. Any thread.
AC_API const HostServices* FindHost() noexcept;

}  // namespace AC
