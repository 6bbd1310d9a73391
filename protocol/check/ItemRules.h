#pragma once

#include "protocol/check/Context.h"

namespace Protocol::Checking {

/// The order of the items in a list.
void CheckOrder(Context& context, std::size_t list);

/// Items with the GUIDs of others, where the last one counts.
void CheckKeys(Context& context, std::size_t list);

/// What an item is nothing without. Says nothing of one of whose parts something else was said.
void CheckRequired(Context& context, std::size_t item);

/// What the values of an element need beside them, and what replaces them.
void CheckCompanions(Context& context, std::size_t element);

}  // namespace Protocol::Checking
