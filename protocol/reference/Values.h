#pragma once

#include "protocol/Model.h"

#include <string>

namespace Protocol::Markdown {

/// \return Whether the place is an element or attribute with a value, and not one that only holds others.
bool HoldsValue(const Place& place);

/// \return What the JSON of a member means, for people.
std::string Meaning(const Place& place, const Json& value);

/// \return The forms of values, a table.
std::string FormTable(const Model& model);

/// \return Every element, in tables: the header, single values, then one for each list or block.
std::string ElementTables(const Model& model);

}  // namespace Protocol::Markdown
