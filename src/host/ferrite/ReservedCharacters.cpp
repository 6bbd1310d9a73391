#include "host/ferrite/ReservedCharacters.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace ferrite::xml::utils {
namespace {

struct Reserved
{
    char16_t character;
    std::u16string_view reference;
};

constexpr std::array<Reserved, 5> kReserved{
    {{u'&', u"&amp;"}, {u'<', u"&lt;"}, {u'>', u"&gt;"}, {u'"', u"&quot;"}, {u'\'', u"&apos;"}}};

/// The reference that stands for each of the first units, or an empty view.
constexpr auto kReferences = [] {
    std::array<std::u16string_view, 64> references{};
    for (const Reserved& row : kReserved)
        references[row.character] = row.reference;
    return references;
}();

/// \return The reference that stands for the unit, or an empty view.
constexpr std::u16string_view ReferenceTo(char16_t unit)
{
    return unit < kReferences.size() ? kReferences[unit] : std::u16string_view();
}

}  // namespace

void EncodeReservedCharacters(const UTF16String& input, UTF16String& output)
{
    std::size_t length = input.size();
    for (const char16_t unit : input)
        if (const std::u16string_view reference = ReferenceTo(unit); !reference.empty())
            length += reference.size() - 1;
    UTF16String result(length, u'\0');
    auto out = result.begin();
    for (const char16_t unit : input) {
        const std::u16string_view reference = ReferenceTo(unit);
        if (reference.empty())
            *out++ = unit;
        else
            out = std::copy(reference.begin(), reference.end(), out);
    }
    output = std::move(result);
}

void DecodeReservedCharacters(const UTF16String& input, UTF16String& output)
{
    if (&input != &output)
        output = input;
    // In place: the result is never longer.
    auto out = output.begin();
    std::u16string_view rest = output;
    while (!rest.empty()) {
        const auto* row = kReserved.end();
        if (rest.front() == u'&')
            row = std::find_if(kReserved.begin(), kReserved.end(), [rest](const Reserved& r) {
                return rest.substr(0, r.reference.size()) == r.reference;
            });
        *out++ = row == kReserved.end() ? rest.front() : row->character;
        rest.remove_prefix(row == kReserved.end() ? 1 : row->reference.size());
    }
    output.erase(out, output.end());
}

}  // namespace ferrite::xml::utils
