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

}  // namespace

void EncodeReservedCharacters(const UTF16String& input, UTF16String& output)
{
    UTF16String result;
    result.reserve(input.size() + input.size() / 2);
    for (const char16_t unit : input) {
        const auto* row = kReserved.end();
        if (unit <= u'>')  // not so for letters
            row = std::find_if(kReserved.begin(), kReserved.end(),
                               [unit](const Reserved& r) { return r.character == unit; });
        if (row == kReserved.end())
            result.push_back(unit);
        else
            result.append(row->reference);
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
