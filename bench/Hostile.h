#pragma once

#include <string>
#include <vector>

namespace Bench {

/// A text that was made to be slow or large, as much as the limits on texts allow.
struct HostileKind
{
    const char* name;
    std::string (*generate)();
};

/// The honest one, which the others are measured against, comes first. All have about the same length.
const std::vector<HostileKind>& HostileKinds();

}  // namespace Bench
