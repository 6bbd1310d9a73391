#pragma once

#include "assetconnector/host/Host.h"
#include "reference_host/Files.h"
#include "reference_host/IngestLibrary.h"
#include "reference_host/Memory.h"
#include "reference_host/PanelEvents.h"
#include "reference_host/Stations.h"
#include "reference_host/Texts.h"

namespace ReferenceHost {

/// One of each service. Making it installs nothing: see Installation.
class Host
{
public:
    /// \param delivery Who delivers posted station messages.
    explicit Host(Stations::Delivery delivery = Stations::Delivery::kOwnThread)
        : mStations(delivery), mPanelEvents(mStations)
    {
    }

    /// \return The table to install, or to put forwarders in front of.
    AC::HostServices Services() { return {mPanelEvents, mStations, mIngestLibrary, mFiles, mTexts, mMemory}; }

    PanelEvents& GetPanelEvents() noexcept { return mPanelEvents; }
    Stations& GetStations() noexcept { return mStations; }
    IngestLibrary& GetIngestLibrary() noexcept { return mIngestLibrary; }
    Files& GetFiles() noexcept { return mFiles; }
    Texts& GetTexts() noexcept { return mTexts; }
    Memory& GetMemory() noexcept { return mMemory; }

private:
    Memory mMemory;
    Files mFiles;
    Texts mTexts;
    IngestLibrary mIngestLibrary;
    Stations mStations;
    PanelEvents mPanelEvents;
};

/// A host installed for as long as this object lives. Make and destroy it while no other thread uses the
/// library; destroy it after the last connector.
class Installation
{
public:
    /// \throws std::logic_error when a host is installed already.
    explicit Installation(Host& host) : Installation(host.Services(), host.GetStations()) {}

    /// \param services What is installed, forwarders maybe. \param stations Where its posted messages wait;
    ///        the last ones are dropped before the host goes.
    /// \throws std::logic_error when a host is installed already.
    Installation(const AC::HostServices& services, Stations& stations) : mStations(stations)
    {
        AC::InstallHost(services);
    }

    ~Installation()
    {
        mStations.DropPosted();
        AC::UninstallHost();
    }

    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

private:
    Stations& mStations;
};

}  // namespace ReferenceHost
