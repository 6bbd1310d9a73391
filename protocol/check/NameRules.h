#pragma once

#include "protocol/check/Context.h"

namespace Protocol::Checking {

/// Which elements and attributes of an element are read. For each child sets what it is, or adds a finding
/// and leaves it null.
void CheckChildren(Context& context, std::size_t element);

void CheckAttributes(Context& context, std::size_t element);

}  // namespace Protocol::Checking
