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
        const auto* row = std::find_if(kReserved.begin(), kReserved.end(),
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
    UTF16String result;
    result.reserve(input.size());
    std::u16string_view rest = input;
    for (std::size_t at = rest.find(u'&'); at != std::u16string_view::npos; at = rest.find(u'&')) {
        result.append(rest.substr(0, at));
        rest.remove_prefix(at);
        const auto* row = std::find_if(kReserved.begin(), kReserved.end(), [rest](const Reserved& r) {
            return rest.substr(0, r.reference.size()) == r.reference;
        });
        if (row == kReserved.end()) {
            result.push_back(u'&');
            rest.remove_prefix(1);
        } else {
            result.push_back(row->character);
            rest.remove_prefix(row->reference.size());
        }
    }
    result.append(rest);
    output = std::move(result);
}

}  // namespace ferrite::xml::utils
