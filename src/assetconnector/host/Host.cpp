#include "assetconnector/host/Host.h"

#include "assetconnector/host/XMLPlatform.h"

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>

namespace AC {
namespace {

std::atomic<const HostServices*> gInstalled{nullptr};

std::string VersionText(std::uint32_t interfaceVersion)
{
    return std::to_string(interfaceVersion / 1000) + '.' + std::to_string(interfaceVersion % 1000);
}

}  // namespace

void InstallHost(const HostServices& services, std::uint32_t interfaceVersion)
{
    if (interfaceVersion != kInterfaceVersion)
        throw std::logic_error("AC::InstallHost: the host was built with headers of version " +
                               VersionText(interfaceVersion) + ", the library is " +
                               VersionText(kInterfaceVersion) +
                               "; build the host with the library's headers");
    XMLPlatform::Require();
    auto table = std::make_unique<const HostServices>(services);
    const HostServices* none = nullptr;
    if (!gInstalled.compare_exchange_strong(none, table.get()))
        throw std::logic_error("AC::InstallHost: a host is installed already; call AC::UninstallHost first");
    static_cast<void>(table.release());  // UninstallHost takes it back
}

void UninstallHost() noexcept
{
    const std::unique_ptr<const HostServices> table(gInstalled.exchange(nullptr));
}

const HostServices& InstalledHost()
{
    const HostServices* services = FindHost();
    if (services == nullptr)
        throw std::logic_error("asset-connector: no host is installed; call AC::InstallHost first");
    return *services;
}

const HostServices* FindHost() noexcept
{
    return gInstalled.load(std::memory_order_acquire);
}

}  // namespace AC
