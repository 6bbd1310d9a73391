#pragma once

#include "assetconnector/host/Host.h"

#include <boost/function.hpp>

#include <utility>

namespace AC {

/// A host installed for as long as this object lives. Made and destroyed while no other thread uses the
/// library; destroyed after the last connector, record and message of the library.
class Installation
{
public:
    /// \param dropPosted Drops the station messages that are still posted: their memory is the host's, so
    /// they
    ///        go before it. Must not throw; empty when the host sees to that itself.
    /// \throws As InstallHost.
    explicit Installation(const HostServices& services, boost::function<void()> dropPosted = {})
        : mDropPosted(std::move(dropPosted))
    {
        InstallHost(services);
    }

    ~Installation()
    {
        if (mDropPosted)
            mDropPosted();
        UninstallHost();
    }

    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

private:
    const boost::function<void()> mDropPosted;
};

}  // namespace AC
