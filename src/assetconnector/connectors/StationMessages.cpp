#include "assetconnector/connectors/StationMessages.h"

#include "assetconnector/connectors/Distinct.h"
#include "assetconnector/host/ridge/TandemEvents.h"

#include <array>
#include <string_view>

namespace AC {
namespace {

/// The identifiers of all messages that share stations.
constexpr std::array kMessageTypes{
    Ridge::TandemEvent::TypeID(),
    Ridge::AddTandemListenerEvent::TypeID(),
    Ridge::RemoveTandemListenerEvent::TypeID(),
#define AC_STATION_MESSAGE(NAMESPACE, NAME, TYPE_NAME, PAYLOAD) NAMESPACE::NAME::TypeID(),
#include "assetconnector/connectors/StationMessages.def"
#undef AC_STATION_MESSAGE
};
static_assert(AreDistinct(kMessageTypes),
              "two messages have the same type name, or names with the same hash");

#define AC_STATION_MESSAGE(NAMESPACE, NAME, TYPE_NAME, PAYLOAD)                    \
    static_assert(std::string_view(TYPE_NAME) == ".?AV" #NAME "@" #NAMESPACE "@@", \
                  "the type name is not the decorated name of the class");
#include "assetconnector/connectors/StationMessages.def"
#undef AC_STATION_MESSAGE

}  // namespace
}  // namespace AC
