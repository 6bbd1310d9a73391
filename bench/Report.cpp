#include "bench/Report.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <iomanip>
#include <optional>
#include <utility>

namespace Bench {
namespace {

enum class Bound
{
    kNone,
    kAtMost,
    kUnder,
};

/// One row of the table for each size. In the name of the benchmarks, # stands for the size and * for the
/// one that is measured and the other one.
struct Row
{
    const char* benchmarks;
    const char* measured;
    const char* other;  ///< Null: only the measured value is told.
    std::vector<const char*> sizes = {""};
    Bound bound = Bound::kNone;
    double limit = 0;
    bool isPeak = false;  ///< Of memory, else of time.
};

using B = Bound;

// clang-format off
/// What is told, and the targets.
const Row kRows[] = {
    {"decode/assets/#/*", "library", "xerces", {"100"}, B::kAtMost, 1.25},
    {"decode/assets/#/*", "library", "xerces", {"30000"}, B::kAtMost, 0.05},
    {"decode/request/1/*", "library", "xerces", {""}, B::kAtMost, 1.3},
    {"decode/assets/#/*", "library", "xsdcxx", {"1", "100", "3000", "30000"}, B::kUnder, 1},
    {"encode/assets/#/*", "library", "xerces", {"100", "30000"}, B::kUnder, 1},
    {"encode/assets/#/*", "library", "xsdcxx", {"100", "30000"}, B::kAtMost, 0.5},
    {"encode/assets/#/*", "panelText", "library", {"100", "30000"}, B::kAtMost, 1.15},
    {"callback/*", "connector", "library", {""}, B::kUnder, 2},
    {"decode/#/*/library", "30000", "100", {"assets", "media"}, B::kAtMost, 1.3},
    {"encode/#/*/library", "30000", "100", {"assets", "media"}, B::kAtMost, 1.3},
    {"decode/#/*/library", "30000", "100", {"assets", "media"}, B::kAtMost, 1.3, true},
    {"encode/#/*/library", "30000", "100", {"assets", "media"}, B::kAtMost, 1.3, true},
    {"decode/assets/#/*", "library", "xerces", {"1", "3000"}},
    {"decode/media/#/*", "library", "xerces", {"1", "100", "3000", "30000"}},
    {"decode/#/*/library", "10000", "100", {"properties", "columns"}},
    {"encode/properties/*/library", "10000", "100"},
    {"decode/assets/#/*", "library", "pugixml", {"1", "100", "30000"}},
    {"encode/assets/#/*", "library", "pugixml", {"1", "100", "30000"}},
    {"decode/assets/#/*", "library", "libxml2", {"1", "100", "30000"}},
    {"encode/assets/#/*", "library", "libxml2", {"1", "100", "30000"}},
    {"decode/request/1/*", "connector", "library"},
    {"station/*", "connector", nullptr},
    {"references/*", "pair", nullptr},
};
// clang-format on

/// \return The text with the first such mark replaced.
std::string Filled(std::string text, char mark, const std::string& by)
{
    const std::size_t place = text.find(mark);
    return place == std::string::npos ? text : text.replace(place, 1, by);
}

std::string Number(double value, const char* unit)
{
    char text[32];
    std::snprintf(text, sizeof text, value < 0.1 ? "%.3f%s" : value < 100 ? "%.2f%s" : "%.0f%s", value, unit);
    return text;
}

std::string Duration(double nanoseconds)
{
    if (nanoseconds < 1e3)
        return Number(nanoseconds, " ns");
    return nanoseconds < 1e6 ? Number(nanoseconds / 1e3, " us") : Number(nanoseconds / 1e6, " ms");
}

std::optional<double> Median(const Samples& samples, const std::string& name)
{
    const auto found = samples.find(name);
    if (found == samples.end())
        return std::nullopt;
    std::vector<double> values = found->second;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// A row with its figures.
struct Line
{
    std::string what;
    std::optional<double> measured;
    std::optional<double> other;
    const Row& row;

    bool IsComplete() const { return measured && (other || row.other == nullptr); }
    double Ratio() const { return *measured / *other; }

    std::string Target() const
    {
        if (row.bound == Bound::kNone)
            return "";
        return (row.bound == Bound::kAtMost ? "<= " : "< ") + Number(row.limit, "");
    }

    std::string Result() const
    {
        if (!IsComplete())
            return "not measured";
        if (row.bound == Bound::kNone)
            return "";
        const bool isMet = row.bound == Bound::kAtMost ? Ratio() <= row.limit : Ratio() < row.limit;
        return isMet ? "met" : "not met";
    }

    std::string Value(const std::optional<double>& value) const
    {
        if (!value)
            return "";
        return row.isPeak ? Number(*value, " B/B") : Duration(*value);
    }
};

std::vector<Line> Lines(const Samples& nanoseconds, const Samples& peaks)
{
    std::vector<Line> lines;
    for (const Row& row : kRows)
        for (const char* size : row.sizes) {
            const Samples& samples = row.isPeak ? peaks : nanoseconds;
            const std::string name = Filled(row.benchmarks, '#', size);
            Line line{
                Filled(name, '*', row.measured), Median(samples, Filled(name, '*', row.measured)), {}, row};
            if (row.other != nullptr) {
                line.what = Filled(name, '*', std::string(row.measured) + ":" + row.other);
                line.other = Median(samples, Filled(name, '*', row.other));
            }
            if (row.isPeak)
                line.what += ", peak";
            lines.push_back(line);
        }
    return lines;
}

}  // namespace

void Report::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred)
            continue;
        const auto counter = [&run](const char* name) {
            const auto found = run.counters.find(name);
            return found == run.counters.end() ? 0.0 : found->second.value;
        };
        const std::string& name = run.run_name.function_name;
        mNanoseconds[name].push_back(run.GetAdjustedCPUTime() / std::max(1.0, counter("items")));
        if (counter("peak") > 0)
            mPeaks[name].push_back(counter("peak"));
    }
}

void Report::PrintTable(std::ostream& out) const
{
    const auto print = [&out](const std::string& what, const std::string& measured, const std::string& other,
                              const std::string& ratio, const std::string& target,
                              const std::string& result) {
        out << std::left << std::setw(44) << what << std::right << std::setw(11) << measured << std::setw(11)
            << other << std::setw(8) << ratio << std::setw(10) << target << "  " << result << '\n';
    };
    print("", "this", "other", "ratio", "target", "");
    for (const Line& line : Lines(mNanoseconds, mPeaks))
        print(line.what, line.Value(line.measured), line.Value(line.other),
              line.measured && line.other ? Number(line.Ratio(), "") : "", line.Target(), line.Result());
}

void Report::PrintJson(std::ostream& out) const
{
    auto rows = nlohmann::ordered_json::array();
    for (const Line& line : Lines(mNanoseconds, mPeaks)) {
        nlohmann::ordered_json row{{"what", line.what},
                                   {"unit", line.row.isPeak ? "bytes per byte" : "ns per item"}};
        if (line.measured)
            row["this"] = *line.measured;
        if (line.other)
            row["other"] = *line.other;
        if (line.measured && line.other)
            row["ratio"] = line.Ratio();
        row["target"] = line.Target();
        row["result"] = line.Result();
        rows.push_back(std::move(row));
    }
    out << rows.dump(2) << '\n';
}

}  // namespace Bench
