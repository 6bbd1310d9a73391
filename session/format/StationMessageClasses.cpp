#include "session/format/StationMessageClasses.h"

#include "session/format/Rows.h"

namespace Session {
namespace {

template <class Message>
void WritePayload(const ValueWriter& writer, const Kiln::Message& message, JsonText& out)
{
    writer.Write(static_cast<const Message&>(message).GetPayload(), out);
}

constexpr StationMessageClass kStationMessages[] = {
#define AC_STATION_MESSAGE(NAMESPACE, NAME, TYPE_NAME, PAYLOAD) \
    {NAMESPACE::NAME::TypeID(), #NAMESPACE "::" #NAME, &WritePayload<NAMESPACE::NAME>},
#include "assetconnector/connectors/StationMessages.def"
#undef AC_STATION_MESSAGE
};

}  // namespace

const StationMessageClass* FindStationMessageClass(const Kiln::Message& message)
{
    return FindRow(kStationMessages,
                   [id = message.MessageTypeID()](const auto& row) { return row.typeID == id; });
}

}  // namespace Session
