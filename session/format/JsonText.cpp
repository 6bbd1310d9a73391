#include "session/format/JsonText.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Session {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

/// What stands behind the backslash for a byte: a letter; 'u' for those without one of their own; 0 for bytes
/// that stand for themselves.
constexpr std::array<char, 256> Escapes()
{
    std::array<char, 256> letters{};
    for (std::size_t control = 0; control < 0x20; ++control)
        letters[control] = 'u';
    letters['\b'] = 'b';
    letters['\f'] = 'f';
    letters['\n'] = 'n';
    letters['\r'] = 'r';
    letters['\t'] = 't';
    letters['"'] = '"';
    letters['\\'] = '\\';
    return letters;
}
constexpr std::array<char, 256> kEscapes = Escapes();

char EscapeOf(char byte)
{
    return kEscapes[static_cast<unsigned char>(byte)];
}

template <class Text>
std::size_t LengthOfASCII(const Text& text)
{
    const auto end = std::find_if(text.begin(), text.end(), [](auto unit) {
        return static_cast<std::make_unsigned_t<decltype(unit)>>(unit) >= 0x80U;
    });
    return static_cast<std::size_t>(end - text.begin());
}

}  // namespace

void JsonText::Name(std::string_view name)
{
    Separate();
    mText += '"';
    mText += name;
    mText += "\":";
    mNeedsComma = false;
}

void JsonText::Escape(std::string_view text)
{
    const char* from = text.data();
    const char* const end = from + text.size();
    while (true) {
        const char* const special = std::find_if(from, end, EscapeOf);
        mText.append(from, special);
        if (special == end)
            return;
        mText += '\\';
        mText += EscapeOf(*special);
        if (EscapeOf(*special) == 'u') {
            mText += *special < 0x10 ? "000" : "001";
            mText += kHexDigits[static_cast<unsigned char>(*special) & 0xFU];
        }
        from = special + 1;
    }
}

void JsonText::String(std::string_view text)
{
    Separate();
    mText += '"';
    if (LengthOfASCII(text) == text.size())
        Escape(text);
    else
        Escape(ferrite::utility::UTF16to8(ferrite::utility::UTF8to16(text)));
    mText += '"';
    mNeedsComma = true;
}

void JsonText::String(std::u16string_view text)
{
    Separate();
    mText += '"';
    const std::size_t ascii = LengthOfASCII(text);
    std::size_t plain = 0;
    const std::size_t begin = mText.size();
    mText.resize(begin + ascii);
    while (plain < ascii && EscapeOf(static_cast<char>(text[plain])) == 0) {
        mText[begin + plain] = static_cast<char>(text[plain]);
        ++plain;
    }
    mText.resize(begin + plain);
    if (plain < text.size())
        Escape(ferrite::utility::UTF16to8(text.substr(plain)));
    mText += '"';
    mNeedsComma = true;
}

void JsonText::String(const ferrite::utility::Guid& guid)
{
    const auto text = guid.AsArray();
    String(std::u16string_view(text.data(), ferrite::utility::Guid::kTextLength));
}

}  // namespace Session
