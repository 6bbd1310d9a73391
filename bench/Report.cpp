#include "bench/Report.h"

#include "bench/Hostile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iomanip>
#include <iterator>
#include <optional>
#include <sstream>

namespace Bench {
namespace {

/// A row of the table for each size. In the name of the benchmarks, # stands for the size and * for the one
/// that is measured and the other one.
struct Row
{
    const char* benchmarks;
    const char* measured;
    const char* other;  ///< Null: only the measured value is told.
    std::vector<const char*> sizes = {""};
    const char* bound = "";  ///< "<" or "<=" the limit; empty: no target.
    double limit = 0;
    bool isPeak = false;  ///< Of memory, else of time.
};

// clang-format off
/// What is told, and the targets.
const Row kRows[] = {
    {"decode/assets/#/*", "library", "xerces", {"100"}, "<=", 0.7},
    {"decode/assets/#/*", "library", "xerces", {"30000"}, "<=", 0.025},
    {"decode/media/#/*", "library", "xerces", {"100"}, "<=", 0.7},
    {"decode/request/1/*", "library", "xerces", {""}, "<=", 1},
    {"decode/assets/#/*", "library", "xsdcxx", {"100"}, "<=", 0.48},
    {"encode/assets/#/*", "library", "xsdcxx", {"100"}, "<=", 0.15},
    {"encode/assets/#/*", "library", "xsdcxx", {"30000"}, "<=", 0.22},
    {"encode/assets/#/*", "library", "libxml2", {"100"}, "<=", 0.8},
    {"encode/assets/#/*", "panelText", "library", {"100", "30000"}, "<=", 1.15},
    {"callback/*", "connector", "library", {""}, "<", 2},
    {"callback/*", "recorded", "connector", {""}, "<=", 2},
    {"decode/request/1/*", "recorded", "connector", {""}, "<=", 2},
    {"station/*", "recorded", "connector"},
    {"decode/#/*/library", "30000", "100", {"assets", "media"}, "<=", 1.5},
    {"encode/#/*/utf8", "30000", "100", {"assets", "media"}, "<=", 1.4},
    {"decode/#/*/library", "30000", "100", {"assets", "media"}, "<=", 1.3, true},
    {"encode/#/*/library", "30000", "100", {"assets", "media"}, "<=", 1.3, true},
    {"decode/assets/#/*", "library", "xerces", {"1", "3000"}},
    {"decode/media/#/*", "library", "xerces", {"1", "3000", "30000"}},
    {"encode/assets/#/*", "library", "xerces", {"1", "100", "3000", "30000"}},
    {"decode/assets/#/*", "library", "xsdcxx", {"1", "3000", "30000"}},
    {"encode/assets/#/*", "library", "xsdcxx", {"1", "3000"}},
    {"encode/assets/#/*", "utf8", "xsdcxx", {"100", "30000"}},
    {"encode/#/*/library", "30000", "100", {"assets", "media"}},
    {"decode/#/*/library", "10000", "100", {"properties", "columns"}},
    {"encode/properties/*/library", "10000", "100"},
    {"decode/assets/#/*", "library", "pugixml", {"1", "100", "30000"}},
    {"encode/assets/#/*", "library", "pugixml", {"1", "100", "30000"}},
    {"decode/assets/#/*", "library", "libxml2", {"1", "100", "30000"}},
    {"encode/assets/#/*", "library", "libxml2", {"1", "30000"}},
    {"decode/request/1/*", "connector", "library"},
    {"station/*", "connector", nullptr},
    {"references/*", "pair", nullptr},
};
// clang-format on

/// \return The rows above, and one of time and one of memory for each hostile text.
std::vector<Row> Rows()
{
    std::vector<Row> rows(std::begin(kRows), std::end(kRows));
    const std::vector<HostileKind>& kinds = HostileKinds();
    for (const bool isPeak : {false, true})
        for (auto kind = kinds.begin() + 1; kind != kinds.end(); ++kind)
            rows.push_back({"hostile/*", kind->name, kinds.front().name, {""}, "<=", 20, isPeak});
    return rows;
}

/// A row with its figures; what was not measured has none.
struct Line
{
    std::string what;
    std::string unit;
    std::optional<double> measured;
    std::optional<double> other;
    std::optional<double> ratio;
    std::string target;
    std::string result;
};

/// \return The text with the first such mark replaced.
std::string Filled(std::string text, char mark, const std::string& by)
{
    const std::size_t place = text.find(mark);
    return place == std::string::npos ? text : text.replace(place, 1, by);
}

std::string Number(std::optional<double> value)
{
    std::ostringstream text;
    if (value)
        text << std::fixed << std::setprecision(*value < 0.1 ? 3 : 2) << *value;
    return text.str();
}

std::optional<double> Median(const Samples& samples, const std::string& name)
{
    const auto found = samples.find(name);
    if (found == samples.end())
        return std::nullopt;
    std::vector<double> values = found->second;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Line LineOf(const Row& row, const std::string& size, const Samples& samples)
{
    const std::string name = Filled(row.benchmarks, '#', size);
    Line line{Filled(name, '*', row.measured),
              row.isPeak ? "bytes/byte" : "us/item",
              Median(samples, Filled(name, '*', row.measured)),
              {},
              {},
              "",
              ""};
    if (row.other != nullptr) {
        line.what = Filled(name, '*', std::string(row.measured) + ":" + row.other);
        line.other = Median(samples, Filled(name, '*', row.other));
    }
    if (line.measured && line.other)
        line.ratio = *line.measured / *line.other;
    if (*row.bound == 0)
        return line;
    line.target = std::string(row.bound) + " " + Number(row.limit);
    const bool isMet = row.bound == std::string("<") ? line.ratio < row.limit : line.ratio <= row.limit;
    line.result = !line.ratio ? "not measured" : isMet ? "met" : "not met";
    return line;
}

}  // namespace

void Report::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration)
            continue;
        for (const auto& [counter, value] : run.counters)
            (counter == "items" ? mMicroseconds : mPeaks)[run.run_name.function_name].push_back(
                counter == "items" ? run.GetAdjustedCPUTime() / 1e3 / value : value.value);
    }
}

void Report::Print(std::ostream& table, std::ostream* json) const
{
    auto rows = nlohmann::ordered_json::array();
    const auto print = [&table](const Line& line, const std::string& measured, const std::string& other,
                                const std::string& ratio) {
        table << std::left << std::setw(38) << line.what << std::setw(12) << line.unit << std::right
              << std::setw(9) << measured << std::setw(9) << other << std::setw(8) << ratio << std::setw(10)
              << line.target << "  " << line.result << '\n';
    };
    print({"", "", {}, {}, {}, "target", ""}, "this", "other", "ratio");
    for (const Row& row : Rows())
        for (const char* size : row.sizes) {
            const Line line = LineOf(row, size, row.isPeak ? mPeaks : mMicroseconds);
            print(line, Number(line.measured), Number(line.other), Number(line.ratio));
            rows.push_back(
                {{"what", line.what}, {"unit", line.unit}, {"target", line.target}, {"result", line.result}});
            for (const auto& [key, value] : {std::pair("this", line.measured), std::pair("other", line.other),
                                             std::pair("ratio", line.ratio)})
                if (value)
                    rows.back()[key] = *value;
        }
    if (json != nullptr)
        *json << rows.dump(2) << '\n';
}

}  // namespace Bench
