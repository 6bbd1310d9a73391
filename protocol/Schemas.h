#pragma once

#include "protocol/Model.h"

#include <string>

namespace Protocol {

/// \return An XML schema of what the host writes, before it takes a layer of encoding off. Any thread.
std::string NotificationsXsd(const Model& model);

/// \return A RELAX NG schema of what panels should send; the host takes more. Any thread.
std::string RequestsRng(const Model& model);

}  // namespace Protocol
