#include "ConsoleBuffer.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>

namespace AssetConnector::System {
namespace {

constexpr std::size_t kRoom = 4096;

/// \return The end of the last whole character.
std::size_t EndOfCharacters(const std::string& text)
{
    std::size_t begin = text.size();
    while (begin > 0 && text.size() - begin < 3 &&
           (static_cast<unsigned char>(text[begin - 1]) & 0xC0U) == 0x80U)
        --begin;
    if (begin == 0)
        return text.size();
    const auto first = static_cast<unsigned char>(text[begin - 1]);
    const std::size_t length = first < 0xC0U ? 1 : first < 0xE0U ? 2 : first < 0xF0U ? 3 : 4;
    return text.size() - begin + 1 < length ? begin - 1 : text.size();
}

}  // namespace

ConsoleBuffer::int_type ConsoleBuffer::overflow(int_type unit)
{
    if (traits_type::eq_int_type(unit, traits_type::eof()))
        return traits_type::not_eof(unit);
    const char text = traits_type::to_char_type(unit);
    return xsputn(&text, 1) == 1 ? unit : traits_type::eof();
}

std::streamsize ConsoleBuffer::xsputn(const char* text, std::streamsize size)
{
    mPending.append(text, static_cast<std::size_t>(size));
    return mPending.size() < kRoom || Show(EndOfCharacters(mPending)) ? size : 0;
}

int ConsoleBuffer::sync()
{
    return Show(EndOfCharacters(mPending)) ? 0 : -1;
}

bool ConsoleBuffer::Show(std::size_t end)
{
    const UTF16String text = ferrite::utility::UTF8to16(mPending.substr(0, end));
    mPending.erase(0, end);
    const std::wstring units(text.begin(), text.end());
    for (std::size_t at = 0; at < units.size();) {
        DWORD shown = 0;
        const std::size_t size = std::min(units.size() - at, kRoom);
        if (WriteConsoleW(mConsole, units.data() + at, static_cast<DWORD>(size), &shown, nullptr) == 0 ||
            shown == 0)
            return false;
        at += shown;
    }
    return true;
}

}  // namespace AssetConnector::System
