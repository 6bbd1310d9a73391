#pragma once

#include "session/Json.h"
#include "session/SimulatedHost.h"

#include <boost/function.hpp>

namespace Session {

/// Reads what a "host" line says. \param host Outlives the result.
/// \return Brings it into force.
/// \throws FormatError, nothing being changed.
boost::function<void()> ReadHostSettings(const Json& json, SimulatedHost& host);

}  // namespace Session
