#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace Bench {

/// By the name of the benchmark, one value for each repetition.
using Samples = std::map<std::string, std::vector<double>>;

/// Collects what was measured, and prints the table of ratios and targets.
class Report : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;

    /// \param json Receives the same; may be null.
    void Print(std::ostream& table, std::ostream* json) const;

private:
    Samples mMicroseconds;  ///< For one item.
    Samples mPeaks;         ///< Bytes held for each byte of the text.
};

}  // namespace Bench
