#pragma once

#include "protocol/check/Context.h"

namespace Protocol::Checking {

/// \return What is wrong with an identifier alone.
std::optional<Remark> JudgeEvent(const Model& model, const std::string& identifier, const Quoting& quoting);

/// What the request does not read of the tree, and what it needs and is not there.
/// \param event One of which JudgeEvent says nothing.
void CheckRequest(Context& context, const Event& event);

}  // namespace Protocol::Checking
