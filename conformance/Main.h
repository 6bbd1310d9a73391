#pragma once

#include "conformance/Check.h"
#include "conformance/Subject.h"

#include <vector>

namespace Conformance {

/// A whole program, to be called from a host's main: checks the host and writes the report to the standard
/// output. --help tells the options, which are UTF-8.
/// \param own The host's own checks.
/// \return 0 when nothing failed, 1 when something did, 2 for a bad command line, a file that cannot be
///         written, or a host that cannot be installed. When a check hangs, it writes the report and ends
///         the process with 1.
int Main(int argc, char** argv, const Subject& subject, const std::vector<Check>& own = {});

}  // namespace Conformance
