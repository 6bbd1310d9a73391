#pragma once

#include "protocol/check/Context.h"

namespace Protocol::Checking {

/// What an element's text reads as. \return Whether its children are still to be looked at.
bool CheckText(Context& context, std::size_t element);

/// What its attributes read as.
void CheckAttributeValues(Context& context, std::size_t element);

}  // namespace Protocol::Checking
