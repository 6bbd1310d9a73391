#pragma once

#include "protocol/Model.h"

#include <string>

namespace Protocol::Markdown {

/// \return Whether a connector handles the request.
bool IsHandled(const Event& request);

/// \return Two tables: every request with what answers it, every notification with its cause.
std::string Overview(const Model& model);

/// \return Every event of the kind, by family, each with an example.
std::string Events(const Model& model, const std::string& kind);

/// \return The messages for host components, a table.
std::string StationMessages(const Model& model);

}  // namespace Protocol::Markdown
