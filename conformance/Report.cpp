#include "conformance/Report.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>
#include <string_view>

namespace Conformance {
namespace {

using ferrite::utility::UTF16to8;
using ferrite::utility::UTF8to16;

/// \return The text, well-formed, with a replacement for each unit that has one; replace gives an empty text
/// for a unit that stays.
template <class Replace>
std::string Escaped(const std::string& text, Replace replace)
{
    UTF16String escaped;
    for (const char16_t unit : UTF8to16(text)) {
        const std::string replacement = replace(unit);
        if (replacement.empty())
            escaped += unit;
        else
            escaped += UTF8to16(replacement);
    }
    return UTF16to8(escaped);
}

std::string Hex(char16_t unit)
{
    std::ostringstream out;
    out << std::hex << std::uppercase << std::setw(4) << std::setfill('0') << static_cast<unsigned>(unit);
    return out.str();
}

/// A YAML scalar in double quotes.
std::string Quoted(const std::string& text)
{
    const auto replace = [](char16_t unit) -> std::string {
        if (unit == u'"' || unit == u'\\')
            return {'\\', static_cast<char>(unit)};
        if (unit == u'\n')
            return "\\n";
        if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029 ||
            unit >= 0xFFFE)
            return "\\u" + Hex(unit);
        return {};
    };
    return '"' + Escaped(text, replace) + '"';
}

/// A description or a reason of a TAP line, in which "#" begins a directive.
std::string OfTAPLine(const std::string& text)
{
    return Escaped(text, [](char16_t unit) -> std::string {
        if (unit == u'#' || unit == u'\\')
            return {'\\', static_cast<char>(unit)};
        return unit < 0x20 ? " " : "";
    });
}

/// A value of an attribute, or the content of an element.
std::string XML(const std::string& text)
{
    return Escaped(text, [](char16_t unit) -> std::string {
        switch (unit) {
            case u'&':
                return "&amp;";
            case u'<':
                return "&lt;";
            case u'>':
                return "&gt;";
            case u'"':
                return "&quot;";
            case u'\t':
            case u'\n':
            case u'\r':
                return "&#" + std::to_string(static_cast<unsigned>(unit)) + ";";
            default:
                return unit < 0x20 || unit >= 0xFFFE ? "\xEF\xBF\xBD" : "";
        }
    });
}

std::string Seconds(double seconds)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::fixed << std::setprecision(3) << seconds;
    return out.str();
}

std::string Sentence(const Failure& failure)
{
    return failure.what + ": expected " + failure.expected + ", got " + failure.actual;
}

std::string SummaryOf(const Report& report)
{
    return std::to_string(report.results.size()) +
           " checks: " + std::to_string(report.Count(Outcome::kPassed)) + " passed, " +
           std::to_string(report.Count(Outcome::kFailed)) + " failed, " +
           std::to_string(report.Count(Outcome::kNotChecked)) + " not checked";
}

void WriteDiagnostics(const Result& result, std::ostream& out)
{
    out << "  ---\n  about: " << Quoted(result.about) << "\n  consequence: " << Quoted(result.consequence)
        << "\n  failures:\n";
    for (const Failure& failure : result.failures)
        out << "    - what: " << Quoted(failure.what) << "\n      expected: " << Quoted(failure.expected)
            << "\n      actual: " << Quoted(failure.actual) << "\n";
    out << "  ...\n";
}

void WriteTestCase(const Result& result, std::ostream& out)
{
    const std::size_t point = std::min(result.name.find('.'), result.name.size());
    const std::string name = point < result.name.size() ? result.name.substr(point + 1) : result.name;
    out << "    <testcase classname=\"" << XML(result.name.substr(0, point)) << "\" name=\"" << XML(name)
        << "\" time=\"" << Seconds(result.seconds) << "\"";
    if (result.outcome == Outcome::kPassed) {
        out << "/>\n";
        return;
    }
    out << ">\n";
    if (result.outcome == Outcome::kNotChecked)
        out << "      <skipped message=\"" << XML(result.reason) << "\"/>\n";
    if (result.outcome == Outcome::kFailed) {
        std::string content;
        for (const Failure& failure : result.failures)
            content += Sentence(failure) + '\n';
        out << "      <failure message=\"" << XML(result.about) << "\">"
            << XML(content + "In production: " + result.consequence) << "</failure>\n";
    }
    out << "    </testcase>\n";
}

}  // namespace

std::size_t Report::Count(Outcome outcome) const
{
    return static_cast<std::size_t>(
        std::count_if(results.begin(), results.end(),
                      [outcome](const Result& result) { return result.outcome == outcome; }));
}

void WriteText(const Report& report, std::ostream& out)
{
    for (const Result& result : report.results) {
        switch (result.outcome) {
            case Outcome::kPassed:
                out << "passed       " << result.name << "\n";
                break;
            case Outcome::kNotChecked:
                out << "not checked  " << result.name << ": " << result.reason << "\n";
                break;
            case Outcome::kFailed:
                out << "FAILED       " << result.name << "\n  must hold:     " << result.about
                    << "\n  in production: " << result.consequence << "\n";
                for (const Failure& failure : result.failures)
                    out << "  - " << Sentence(failure) << "\n";
                break;
        }
    }
    out << SummaryOf(report) << "\n";
}

void WriteTAP(const Report& report, std::ostream& out)
{
    out << "TAP version 13\n1.." << report.results.size() << "\n";
    std::size_t number = 0;
    for (const Result& result : report.results) {
        const bool failed = result.outcome == Outcome::kFailed;
        out << (failed ? "not ok " : "ok ") << ++number << " - " << OfTAPLine(result.name);
        if (result.outcome == Outcome::kNotChecked)
            out << " # SKIP " << OfTAPLine(result.reason);
        out << "\n";
        if (failed)
            WriteDiagnostics(result, out);
    }
}

void WriteJUnit(const Report& report, std::ostream& out)
{
    double seconds = 0;
    for (const Result& result : report.results)
        seconds += result.seconds;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n  <testsuite name=\"conformance\" "
           "tests=\""
        << report.results.size() << "\" failures=\"" << report.Count(Outcome::kFailed)
        << R"(" errors="0" skipped=")" << report.Count(Outcome::kNotChecked) << "\" time=\""
        << Seconds(seconds) << "\">\n";
    for (const Result& result : report.results)
        WriteTestCase(result, out);
    out << "  </testsuite>\n</testsuites>\n";
}

}  // namespace Conformance
