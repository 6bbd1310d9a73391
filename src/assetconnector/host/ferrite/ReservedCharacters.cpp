#include "assetconnector/host/ferrite/ReservedCharacters.h"

#include "assetconnector/host/ferrite/ReplacementTable.h"

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

using References = utility::ReplacementTable<char16_t>;

constexpr References kReferences = [] {
    References references;
    for (const Reserved& row : kReserved)
        references.Set(row.character, row.reference);
    return references;
}();

}  // namespace

void EncodeReservedCharacters(const UTF16String& input, UTF16String& output)
{
    constexpr std::size_t kBlock = 256;  // shorter ones are read back while they are still being stored
    std::array<char16_t, kBlock * References::kRoom> block;
    UTF16String result;
    result.reserve(2 * input.size());
    for (std::u16string_view rest = input; !rest.empty();) {
        char16_t* out = block.data();
        for (const char16_t unit : rest.substr(0, kBlock)) {
            if (References::Has(unit))
                out = kReferences.Write(unit, out);
            else
                *out++ = unit;
        }
        result.append(block.data(), out);
        rest.remove_prefix(std::min(rest.size(), kBlock));
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
