#pragma once

#include "session/format/ValueWriter.h"

#include <cstdint>
#include <string_view>

namespace Session {

/// A class of station messages of the library.
struct StationMessageClass
{
    std::uint32_t typeID;
    std::string_view name;
    void (*writePayload)(const ValueWriter& writer, const Kiln::Message& message, JsonText& out);
};

/// \return The message's class; null for a message that is not the library's.
const StationMessageClass* FindStationMessageClass(const Kiln::Message& message);

}  // namespace Session
