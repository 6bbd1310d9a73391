#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Desk {

/// Who is let in: a browser that was given the address with the token, on pages of this very desk. The name
/// in the address is made afresh for each desk, since cookies know names and no ports. Immutable but for the
/// port; any thread.
class Access
{
public:
    /// Makes name, token and cookie of the system's random numbers.
    Access();

    void SetPort(std::uint16_t port);

    /// \return The value of a Host header, such as "desk-0123456789abcdef.localhost:4000".
    const std::string& Authority() const noexcept { return mAuthority; }

    /// \return Such as "http://desk-0123456789abcdef.localhost:4000".
    const std::string& Origin() const noexcept { return mOrigin; }

    /// \return The address to open; the fragment with the token never leaves the browser by itself.
    std::string Address() const;

    const std::string& Token() const noexcept { return mToken; }

    /// In time that does not tell how much of it is right.
    bool IsToken(std::string_view text) const;

    /// \return The value of a Set-Cookie header for who has the token.
    std::string SetCookie() const;

    /// \param header The value of a Cookie header.
    bool HasCookie(std::string_view header) const;

private:
    std::string mName;
    std::string mToken;
    std::string mCookie;
    std::string mAuthority;
    std::string mOrigin;
};

}  // namespace Desk
