#pragma once

#include "protocol/check/Report.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Protocol::Checking {

/// \param form The name of a form; of one that is no number nothing is wrong.
/// \param what The beginning of what is said: what carries the value, and the value.
std::optional<Remark> JudgeNumber(const Quoting& quoting, std::string_view form, const std::string& what,
                                  const std::string& value);

std::optional<Remark> JudgeRate(const Quoting& quoting, const std::string& what, const std::string& value);

/// \return What the host reads in a number of up to 64 bits with a sign, or of 32 bits in an order.
std::int64_t TimeOf(const std::string& value);
std::int32_t OrderOf(const std::string& value);

}  // namespace Protocol::Checking
