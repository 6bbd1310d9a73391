#include "assetconnector/connectors/ConnectorAccess.h"

#include "assetconnector/connectors/ConnectorFrame.h"

namespace AC {

std::optional<Kiln::SharedReferenceBroker> BrokerOf(
    const Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>& reference)
{
    auto* const connector = dynamic_cast<ConnectorFrame*>(reference ? reference->GetRawPointer() : nullptr);
    if (connector == nullptr)
        return std::nullopt;
    return connector->GetReferenceBroker();
}

}  // namespace AC
