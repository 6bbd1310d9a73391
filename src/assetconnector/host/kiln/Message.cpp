#include "assetconnector/host/kiln/Message.h"

namespace Kiln {

MessageCallback::~MessageCallback() = default;

boost::function<void()> MessageCallback::Bind(const boost::shared_ptr<const MessageCallback>& callback)
{
    return [callback] { callback->Run(); };
}

}  // namespace Kiln
