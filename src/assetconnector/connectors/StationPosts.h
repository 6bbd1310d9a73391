#pragma once

#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/ferrite/ImmutableString.h"
#include "assetconnector/host/kiln/StationUtils.h"

namespace AC {

/// The media collection connector's own station.
extern const ferrite::utility::ImmutableString kMCAssetConnectorStation;

/// Posts a copy of the record, as a station message of that class, to the media collection's listeners.
template <class Message>
void Post(const ACMessage& message)
{
    Kiln::StationUtils::PostMessageToUIThread(kMCAssetConnectorStation, Message(message), true);
}

}  // namespace AC
