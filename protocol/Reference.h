#pragma once

#include "protocol/Model.h"

#include <string>

namespace Protocol {

/// \return A page for people, in Markdown: how panels and host talk, every event, every element, every value.
///         Each event and each element has an anchor: "request-TransferRequest",
///         "notification-TransferStatus", "element-transferItemList". Any thread.
std::string Reference(const Model& model);

}  // namespace Protocol
