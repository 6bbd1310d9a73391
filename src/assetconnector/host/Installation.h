#pragma once

#include "assetconnector/host/Host.h"

#include <utility>

namespace AC {

/// A host installed for as long as this object lives. Made and destroyed while no other thread uses the
/// library; destroyed after the last connector, record and message of the library.
///
///     const AC::Installation installation(services, [&stations] { stations.DropPosted(); });
///
/// \tparam DropPosted A function object. Not a boost::function, which would keep a plug-in loaded that
///         was built with a compiler's default options.
template <class DropPosted>
class Installation
{
public:
    /// \param dropPosted Drops the station messages that are still posted: their memory is the host's,
    ///        so they go before it. Must not throw.
    /// \throws As InstallHost.
    explicit Installation(const HostServices& services, DropPosted dropPosted)
        : mDropPosted(std::move(dropPosted))
    {
        InstallHost(services);
    }

    ~Installation()
    {
        mDropPosted();
        UninstallHost();
    }

    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

private:
    DropPosted mDropPosted;
};

}  // namespace AC
