#pragma once

#include "session/Connectors.h"
#include "session/SimulatedHost.h"
#include "session/format/Json.h"

#include <boost/function.hpp>

namespace Session {

/// What a "host" line changes.
struct Stage
{
    SimulatedHost& host;
    Connectors& connectors;
};

/// Reads what a "host" line says. \param stage What it refers to outlives the result.
/// \return Brings it into force.
/// \throws FormatError, nothing being changed.
boost::function<void()> ReadHostSettings(const Json& json, const Stage& stage);

}  // namespace Session
