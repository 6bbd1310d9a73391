// Any text to the checker, also with the event that it begins with in a comment: findings come in the order
// of the text, each is one line, and one says so when the text does not parse.

#include "protocol/check/Check.h"

#include "assetconnector/xml/MessageParser.h"
#include "fuzz/FuzzHost.h"

#include <algorithm>
#include <string>
#include <tuple>

namespace {

void Check(const std::string& text, const std::string& event, bool parses)
{
    const std::vector<Protocol::Finding> findings = Protocol::Check(Protocol::ThisModel(), text, event);
    Require(std::is_sorted(findings.begin(), findings.end(), [](const auto& a, const auto& b) {
        return std::tie(a.line, a.column) < std::tie(b.line, b.column);
    }));
    bool isWellFormed = true;
    for (const Protocol::Finding& finding : findings) {
        isWellFormed = isWellFormed && finding.kind != "not-well-formed";
        const std::string line = Protocol::Describe(finding);
        Require(!finding.what.empty() && !finding.advice.empty() && line.find('\n') == std::string::npos);
        Require(ferrite::utility::UTF16to8(ferrite::utility::UTF8to16(line)) == line);
    }
    Require(isWellFormed == parses);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzHost::Get();
    const std::string text(reinterpret_cast<const char*>(data), size);
    AC::MessageParser parser;
    const bool parses = parser.Parse(TextOf(data, size)) != nullptr;
    Check(text, "", parses);
    const std::string opening = "<!-- event: ";
    if (text.compare(0, opening.size(), opening) == 0)
        Check(text, text.substr(opening.size(), text.find(" -->") - opening.size()), parses);
    return 0;
}
