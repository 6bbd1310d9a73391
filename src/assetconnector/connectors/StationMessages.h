#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/Message.h"
#include "assetconnector/host/ridge/RecordLists.h"
#include "assetconnector/message/ACMessage.h"

#include <array>

/// The typed messages that the media collection connector posts for host components: to its own station
/// (AC::GetMCAssetConnectorStation) those of namespace AC, to the project's station
/// (Loft::kStation_BriselProject) the three of namespace Ridge. A listener tells them apart by
/// Kiln::Message::MessageTypeID, compared with the TypeID() of each class, and then casts. They are
/// delivered on the user-interface thread.
namespace AC {

/// What every message class of the library is: its payload, copied once at construction. A message never
/// changes: moving one copies it.
template <class Message, class PayloadType>
class StationMessage : public Kiln::MessageImpl<Message>
{
public:
    using Payload = PayloadType;

    /// \return What the message carries; valid as long as the message.
    const Payload& GetPayload() const noexcept { return mPayload; }

protected:
    explicit StationMessage(const Payload& payload) : mPayload(payload) {}

private:
    const Payload mPayload;
};

}  // namespace AC

namespace Ridge {

/// The new names of the inserted columns, then the names that some of them had before.
struct InsertedColumns
{
    ColumnTexts newNames;
    ColumnTexts previousNames;
};

}  // namespace Ridge

#define AC_STATION_MESSAGE(NAMESPACE, NAME, TYPE_NAME, PAYLOAD)            \
    namespace NAMESPACE {                                                  \
    class NAME : public AC::StationMessage<NAME, PAYLOAD>                  \
    {                                                                      \
    public:                                                                \
        AC_CONSTANT static constexpr char kTypeName[] = TYPE_NAME;         \
        explicit NAME(const PAYLOAD& payload) : StationMessage(payload) {} \
    };                                                                     \
    }
#include "assetconnector/connectors/StationMessages.def"
#undef AC_STATION_MESSAGE

namespace AC {

/// The identifiers of all classes.
constexpr std::array kStationMessageTypes{
#define AC_STATION_MESSAGE(NAMESPACE, NAME, TYPE_NAME, PAYLOAD) NAMESPACE::NAME::TypeID(),
#include "assetconnector/connectors/StationMessages.def"
#undef AC_STATION_MESSAGE
};
static_assert(kStationMessageTypes.size() == 20);

}  // namespace AC
