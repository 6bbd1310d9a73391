#include "protocol/check/Report.h"

#include "protocol/check/Names.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace Protocol::Checking {
namespace {

constexpr std::size_t kLongest = 60;
constexpr std::size_t kLongestLine = 200;
/// With more of them no value is quoted, so that a check takes no more than the length of the text allows.
constexpr std::size_t kMostPasswords = 16;
constexpr const char* kMasked = "***";

bool IsWordCharacter(char unit)
{
    return (Folded(unit) >= 'a' && Folded(unit) <= 'z') || (unit >= '0' && unit <= '9');
}

/// \return The text with control characters as blanks, cut between characters of UTF-8.
std::string Harmless(std::string_view text, std::size_t longest)
{
    std::string result(text.substr(0, longest));
    if (text.size() > longest) {
        while (!result.empty() && (static_cast<unsigned char>(text[result.size()]) & 0xC0U) == 0x80U)
            result.pop_back();
        result += "...";
    }
    for (std::size_t at = 0; at < result.size(); ++at) {
        const auto unit = static_cast<unsigned char>(result[at]);
        if (unit < 0x20 || unit == 0x7F)
            result[at] = ' ';
        // U+0080 to U+009F.
        if (unit == 0xC2 && at + 1 < result.size() && static_cast<unsigned char>(result[at + 1]) < 0xA0)
            result.replace(at, 2, " ");
    }
    return result;
}

}  // namespace

Quoting::Quoting(const TextTree& tree)
{
    const auto add = [this](const std::string& name, const std::string& value) {
        if (IsPasswordName(name) && !IsBlank(value) && mPasswords.size() <= kMostPasswords)
            mPasswords.insert(Trimmed(value));
    };
    for (const Element& element : tree.elements) {
        add(element.name, element.value.value_or(""));
        for (const auto& [name, value] : element.attributes)
            add(name, value);
    }
}

std::string Quoting::Value(std::string_view value) const
{
    const bool isAddress =
        value.find("://") != std::string_view::npos && value.find('@') != std::string_view::npos;
    const bool holdsPassword =
        std::any_of(mPasswords.begin(), mPasswords.end(),
                    [value](const auto& password) { return value.find(password) != std::string_view::npos; });
    const bool isMasked = isAddress || holdsPassword || mPasswords.size() > kMostPasswords;
    return '"' + (isMasked ? kMasked : Harmless(value, kLongest)) + '"';
}

std::string Quoting::Name(std::string_view name) const
{
    return mPasswords.count(name) == 0 ? Harmless(name, kLongest) : kMasked;
}

std::string Quoting::Line(std::string_view text)
{
    return Harmless(text, kLongestLine);
}

bool Quoting::HoldsPassword(std::string_view text) const
{
    constexpr std::size_t kShortest = 4;  // shorter ones stand in honest texts, too
    const auto isWordAt = [text](std::size_t at, std::size_t length) {
        return (at == 0 || !IsWordCharacter(text[at - 1])) &&
               (at + length == text.size() || !IsWordCharacter(text[at + length]));
    };
    for (const std::string& password : mPasswords)
        for (std::size_t at = text.find(password); at != std::string_view::npos;
             at = text.find(password, at + 1))
            if (password.size() >= kShortest && isWordAt(at, password.size()))
                return true;
    return false;
}

bool IsAddressWithPassword(std::string_view value)
{
    const std::size_t scheme = value.find("://");
    if (scheme == std::string_view::npos)
        return false;
    const std::string_view authority =
        value.substr(scheme + 3, value.find_first_of("/?#", scheme + 3) - scheme - 3);
    const std::size_t at = authority.rfind('@');
    return at != std::string_view::npos && authority.substr(0, at).find(':') < at - 1;
}

std::string PlaceText(const AC::TextPlace& place)
{
    return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
}

void Report::Add(const AC::TextPlace& place, std::string_view path, Remark remark)
{
    mFindings.push_back({place.line, place.column,
                         std::string(FindingKinds()[static_cast<std::size_t>(remark.kind)].name),
                         std::string(path), std::move(remark.what), std::move(remark.advice)});
}

std::vector<Finding> Report::Take()
{
    std::stable_sort(mFindings.begin(), mFindings.end(), [](const Finding& a, const Finding& b) {
        return std::tie(a.line, a.column) < std::tie(b.line, b.column);
    });
    return std::move(mFindings);
}

}  // namespace Protocol::Checking

namespace Protocol {

const std::vector<FindingKind>& FindingKinds()
{
    static const std::vector<FindingKind> kKinds{
#define PROTOCOL_FINDING(CONSTANT, NAME, ABOUT) {NAME, ABOUT},
#include "protocol/check/Kinds.def"
#undef PROTOCOL_FINDING
    };
    return kKinds;
}

}  // namespace Protocol
