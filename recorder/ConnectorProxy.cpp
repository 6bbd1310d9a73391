#include "recorder/ConnectorProxy.h"

#include <utility>

namespace Recording {

ConnectorProxy::ConnectorProxy(const Notifier& connector, CallbackHook hook, SetDispatcherOf setDispatcher)
    : ForwardingNotifier(connector, hook), mSetDispatcher(std::move(setDispatcher))
{
}

ConnectorProxy::Notifier ConnectorProxy::Make(const Notifier& connector, CallbackHook hook,
                                              SetDispatcherOf setDispatcher)
{
    return Notifier::Retain(new ConnectorProxy(connector, hook, std::move(setDispatcher)));
}

void ConnectorProxy::Release()
{
    if (mCount.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete this;
}

std::int32_t ConnectorProxy::QueryInterface(const Guid& interfaceID, void*& out)
{
    if (interfaceID == Ridge::IIngestLibraryNotifier::kInterfaceID)
        out = static_cast<Ridge::IIngestLibraryNotifier*>(this);
    else if (interfaceID == AC::IAssetConnectorPrivate::kInterfaceID)
        out = static_cast<AC::IAssetConnectorPrivate*>(this);
    else
        return GetNext()->QueryInterface(interfaceID, out);
    return 0;
}

}  // namespace Recording
