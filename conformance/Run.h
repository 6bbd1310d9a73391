#pragma once

#include "conformance/Check.h"
#include "conformance/Report.h"
#include "conformance/Subject.h"

#include <boost/function.hpp>

#include <chrono>
#include <string>
#include <vector>

namespace Conformance {

/// \return The checks of the kit, in the order in which they are run.
const std::vector<Check>& Checks();

struct Options
{
    /// Which checks to run: names, or services ("stations"); what they need is run, too. Empty: all.
    std::vector<std::string> only;

    /// The host's own checks, behind those of the kit.
    std::vector<Check> own;

    /// How long a check waits for what must come.
    std::chrono::milliseconds limit = std::chrono::seconds(5);

    /// How long a whole check may take.
    std::chrono::milliseconds hangLimit = std::chrono::seconds(60);

    /// Called, on another thread, when a check takes longer than that: a service does not come back; or when
    /// an exception leaves a thread of the host, which ends the process. The report says so; nothing else can
    /// be done but to end the process. Empty: the run waits on.
    boost::function<void(const Report& report)> onHang;
};

/// Checks a host, on this thread and some of its own, which have ended when this returns. It installs the
/// table, initialises the XML platform, and ends both. It may be called again, with the same table.
/// \throws std::invalid_argument when a name of the options fits no check, or two checks have one name;
///         std::logic_error when a host is installed.
Report Run(const Subject& subject, const Options& options = {});

}  // namespace Conformance
