#pragma once

#include "conformance/Check.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace Conformance {

enum class Outcome
{
    kPassed,
    kFailed,
    kNotChecked,
};

/// What came of one check.
struct Result
{
    std::string name;
    std::string about;
    std::string consequence;
    Outcome outcome = Outcome::kNotChecked;
    std::vector<Failure> failures;  ///< Not empty if and only if it failed.
    std::string reason;             ///< Why it is not checked.
    double seconds = 0;
};

/// What came of all, in the order in which they ran.
struct Report
{
    std::vector<Result> results;

    std::size_t Count(Outcome outcome) const;
};

/// For people: a line for each check, below a failure what must hold, what goes wrong and what came; counts.
void WriteText(const Report& report, std::ostream& out);

/// The Test Anything Protocol, version 13, with diagnostics in YAML.
void WriteTAP(const Report& report, std::ostream& out);

/// JUnit's XML: a test suite whose classes are the services.
void WriteJUnit(const Report& report, std::ostream& out);

}  // namespace Conformance
