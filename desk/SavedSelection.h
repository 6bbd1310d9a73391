#pragma once

#include "desk/Traffic.h"

#include <string>
#include <vector>

namespace Desk {

/// \return A session file of these inputs: it begins with the state that they need, and has the host settings
///         of each, and of deliveries those that belong to what it posts. Whether it stands alone a replay
///         tells: what was left out may have turned what the library remembers.
std::string SessionOf(const std::vector<Traffic::Passage>& passages);

}  // namespace Desk
