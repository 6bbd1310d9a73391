#pragma once

#include "protocol/Model.h"

#include <string>

namespace Protocol {

/// \return The part of the model that the panels' client needs, as a module of JavaScript. Any thread.
std::string ClientModel(const Model& model);

}  // namespace Protocol
