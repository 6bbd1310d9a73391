#pragma once

#include "assetconnector/host/Installation.h"
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

/// Drops what is posted at stations.
struct DropPosted
{
    void operator()() const { stations.DropPosted(); }

    Stations& stations;
};

/// AC::Installation of this host's services, or of forwarders to them.
class Installation : public AC::Installation<DropPosted>
{
public:
    /// \throws As AC::InstallHost.
    explicit Installation(Host& host) : Installation(host.Services(), host.GetStations()) {}

    /// \param services What is installed. \param stations Where its posted messages wait.
    /// \throws As AC::InstallHost.
    Installation(const AC::HostServices& services, Stations& stations)
        : AC::Installation<DropPosted>(services, {stations})
    {
    }
};

}  // namespace ReferenceHost
