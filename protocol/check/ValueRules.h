#pragma once

#include "protocol/check/Context.h"

namespace Protocol::Checking {

/// What an element's text reads as. \return Whether its children are still to be looked at.
bool CheckText(Context& context, std::size_t element);

/// What its attributes read as.
void CheckAttributeValues(Context& context, std::size_t element);

/// \param subject What carries the value, as findings call it.
/// \return What is wrong with the value alone.
std::optional<Remark> JudgeValue(const Context& context, const Place& place, const std::string& subject,
                                 const std::string& value);

}  // namespace Protocol::Checking
