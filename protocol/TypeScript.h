#pragma once

#include "protocol/Model.h"

#include <string>

namespace Protocol {

/// \return Declarations for TypeScript of all requests and notifications, as JSON has them. Any thread.
std::string TypeScript(const Model& model);

}  // namespace Protocol
