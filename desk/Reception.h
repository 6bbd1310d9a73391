#pragma once

#include "desk/Access.h"
#include "desk/Pages.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Desk {

/// What a request says, as far as the desk looks at it.
struct Visit
{
    std::string_view method;
    std::string_view target;
    /// Fields that come exactly once.
    std::optional<std::string_view> host, origin, cookie, token;
    bool hasOrigin = false;  ///< However often.
    std::string_view body;
};

struct Reply
{
    unsigned status = 200;
    std::string content;
    std::vector<std::pair<const char*, std::string>> fields;
    std::string report;  ///< What the content policy of a page blocked; empty: nothing.
};

/// Decides what a browser is told. A request for another name is refused first, then one of a foreign page;
/// a socket needs a page of this desk and the cookie. Used on one thread.
class Reception
{
public:
    static constexpr const char* kTokenField = "Desk-Token";

    /// Both outlive the reception.
    Reception(const Access& access, const Site& site) : mAccess(access), mSite(site) {}

    Reply Answer(const Visit& visit) const;

    /// \return Why there is no WebSocket for the request; none when there is.
    std::optional<Reply> RefuseSocket(const Visit& visit) const;

    /// \param text One line on what is wrong and what to do.
    Reply Text(unsigned status, const char* text) const;

private:
    std::optional<Reply> RefuseStranger(const Visit& visit) const;
    Reply Session(const Visit& visit) const;
    Reply Report(const Visit& visit) const;
    bool HasCookie(const Visit& visit) const { return visit.cookie && mAccess.HasCookie(*visit.cookie); }
    Reply WithoutToken() const;
    Reply NotAllowed(const char* allowed) const;
    Reply Make(unsigned status, const char* type, std::string content) const;

    const Access& mAccess;
    const Site& mSite;
};

}  // namespace Desk
