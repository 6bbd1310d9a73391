#include "session/Outline.h"

#include <algorithm>
#include <cctype>

namespace Session {
namespace {

constexpr std::size_t kGuidLength = 36;

bool IsGuid(std::string_view text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isHyphen = at == 8 || at == 13 || at == 18 || at == 23;
        if (isHyphen ? text[at] != '-' : std::isxdigit(static_cast<unsigned char>(text[at])) == 0)
            return false;
    }
    return text.size() == kGuidLength;
}

/// \return The text without control characters but for line feed and TAB, GUIDs as their first eight and last
///         four digits.
std::string Legible(std::string_view text)
{
    std::string legible;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t control = LengthOfControlAt(text, at);
        if (control != 0 && text[at] != '\n' && text[at] != '\t') {
            legible += "\uFFFD";
            at += control - 1;
        } else if (IsGuid(text.substr(at, kGuidLength))) {
            legible.append(text.substr(at, 8)).append("…").append(text.substr(at + kGuidLength - 4, 4));
            at += kGuidLength - 1;
        } else {
            legible += text[at];
        }
    }
    return legible;
}

/// \return Whether the value takes lines of its own.
bool IsNested(const OrderedJson& value)
{
    if (value.is_string())
        return value.get_ref<const std::string&>().find('\n') != std::string::npos;
    return value.is_structured() && !value.empty();
}

/// \return The text of a value that is not nested.
std::string ScalarText(const OrderedJson& value)
{
    if (value.is_string() && !value.get_ref<const std::string&>().empty())
        return value.get<std::string>();
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    return value.is_number() ? value.dump() : "–";
}

const char* CodeOf(Colour colour)
{
    static constexpr const char* kCodes[] = {"", "1", "2", "1;31", "32", "33", "34", "35", "36"};
    return kCodes[static_cast<std::size_t>(colour)];
}

}  // namespace

std::size_t LengthOfControlAt(std::string_view text, std::size_t at)
{
    const auto byte = static_cast<unsigned char>(text[at]);
    const auto next = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : 0);
    if (byte == 0xC2 && next >= 0x80 && next < 0xA0)  // U+0080 to U+009F
        return 2;
    return byte < 0x20 || byte == 0x7F ? 1 : 0;
}

Outline& Outline::Put(Colour colour, const std::string& text)
{
    const bool coloured = mColoured && colour != Colour::kNone;
    if (coloured)
        mOutput << "\x1B[" << CodeOf(colour) << 'm';
    mOutput << Legible(text);
    if (coloured)
        mOutput << "\x1B[0m";
    return *this;
}

void Outline::PutLines(std::size_t indent, Colour colour, const std::string& text)
{
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        Indent(indent);
        Put(colour, text.substr(begin, end - begin));
        EndLine();
        begin = end + 1;
    }
}

void Outline::Indent(std::size_t indent)
{
    if (mBullet)
        mOutput << std::string(indent - 2, ' ') << "• ";
    else
        mOutput << std::string(indent, ' ');
    mBullet = false;
}

void Outline::PutValue(std::size_t indent, const OrderedJson& value, std::size_t levelsLeft)
{
    if (value.is_string()) {
        PutLines(indent, Colour::kNone, value.get_ref<const std::string&>());
        return;
    }
    if (levelsLeft == 0) {
        PutLines(indent, Colour::kDim, "…");
        return;
    }
    std::size_t width = 0;
    if (value.is_object())
        for (const auto& [name, member] : value.items())
            width = std::max(width, Legible(name).size());
    for (const auto& [name, member] : value.items()) {
        const bool isNested = IsNested(member);
        if (value.is_object()) {
            Indent(indent);
            Put(Colour::kDim, name);
            Put(Colour::kNone, isNested ? "" : std::string(width - Legible(name).size() + 2, ' '));
        } else {
            mBullet = true;
            if (!isNested)
                Indent(indent + 2);
        }
        if (!isNested)
            Put(member.empty() ? Colour::kDim : Colour::kNone, ScalarText(member));
        if (!isNested || value.is_object())
            EndLine();
        if (isNested)
            PutValue(indent + 2, member, levelsLeft - 1);
    }
}

}  // namespace Session
