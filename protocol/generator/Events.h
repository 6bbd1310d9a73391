#pragma once

#include "protocol/Model.h"

#include <vector>

namespace Protocol::Generator {

/// Fills events and station messages: from the facts, and from what both connectors do on a host that records
/// it, with every request and every callback. \throws std::runtime_error when facts and connectors do not
/// fit.
void AddEvents(Model& model);

}  // namespace Protocol::Generator
