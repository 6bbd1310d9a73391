#pragma once

#include "conformance/Check.h"

#include <vector>

/// The checks of the kit by what they look at.
namespace Conformance {

std::vector<Check> MemoryChecks();
std::vector<Check> StationChecks();
std::vector<Check> PostedMessageChecks();
std::vector<Check> FileChecks();
std::vector<Check> TextChecks();
std::vector<Check> IngestLibraryChecks();
std::vector<Check> PanelEventChecks();
std::vector<Check> ConnectorChecks();

}  // namespace Conformance
