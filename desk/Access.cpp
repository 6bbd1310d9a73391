#include "desk/Access.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <random>

namespace Desk {
namespace {

constexpr std::string_view kCookieName = "desk=";

/// \return Hexadecimal digits, eight for each word, from the system's random numbers.
std::string RandomDigits(int words)
{
    std::random_device random;
    std::string digits;
    for (int i = 0; i < words; ++i) {
        char text[9];
        std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(random()));
        digits += text;
    }
    return digits;
}

bool EqualsInConstantTime(std::string_view secret, std::string_view text)
{
    if (secret.size() != text.size())
        return false;
    unsigned difference = 0;
    for (std::size_t i = 0; i < secret.size(); ++i)
        difference |= static_cast<unsigned>(static_cast<unsigned char>(secret[i])) ^
                      static_cast<unsigned>(static_cast<unsigned char>(text[i]));
    return difference == 0;
}

}  // namespace

Access::Access() : mName("desk-" + RandomDigits(2)), mToken(RandomDigits(8)), mCookie(RandomDigits(8))
{
    SetPort(0);
}

void Access::SetPort(std::uint16_t port)
{
    mAuthority = mName + ".localhost:" + std::to_string(port);
    mOrigin = "http://" + mAuthority;
}

std::string Access::Address() const
{
    return mOrigin + "/#token=" + mToken;
}

bool Access::IsToken(std::string_view text) const
{
    return EqualsInConstantTime(mToken, text);
}

std::string Access::SetCookie() const
{
    return std::string(kCookieName) + mCookie + "; Path=/; Secure; HttpOnly; SameSite=Strict";
}

bool Access::HasCookie(std::string_view header) const
{
    while (!header.empty()) {
        const std::size_t end = header.find(';');
        const std::string_view cookie = header.substr(0, end);
        if (cookie.substr(0, kCookieName.size()) == kCookieName &&
            EqualsInConstantTime(mCookie, cookie.substr(kCookieName.size())))
            return true;
        if (end == std::string_view::npos)
            return false;
        header.remove_prefix(end + 1);
        header.remove_prefix(std::min(header.find_first_not_of(' '), header.size()));
    }
    return false;
}

}  // namespace Desk
