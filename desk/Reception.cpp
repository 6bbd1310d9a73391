#include "desk/Reception.h"

#include <nlohmann/json.hpp>

namespace Desk {
namespace {

constexpr std::string_view kSocketTarget = "/socket";
constexpr std::string_view kSessionTarget = "/session";
constexpr std::string_view kReportTarget = "/csp-report";

/// \return The member; null without one. Nothing is copied: what nests deeply would take stack.
const nlohmann::json* MemberOf(const nlohmann::json& json, const char* member)
{
    const auto found = json.find(member);  // nothing in what is no object
    return found == json.end() ? nullptr : &*found;
}

/// \return What a browser's report says.
std::string ReportOf(std::string_view body)
{
    using Json = nlohmann::json;
    const Json json = Json::parse(body, nullptr, false);
    const Json* const report = MemberOf(json, "csp-report");
    if (report == nullptr || !report->is_object())
        return "policy: a report that cannot be read";
    const auto text = [report](const char* member) {
        const Json* const value = MemberOf(*report, member);
        if (value == nullptr || !value->is_primitive() || value->is_null())
            return std::string();
        return value->is_string() ? value->get<std::string>() : value->dump();
    };
    return "policy: " + text("effective-directive") + " blocked " + text("blocked-uri") + " on " +
           text("document-uri") + ", " + text("source-file") + " line " + text("line-number");
}

}  // namespace

Reply Reception::Answer(const Visit& visit) const
{
    if (std::optional<Reply> refusal = RefuseStranger(visit))
        return std::move(*refusal);
    if (visit.target == kSessionTarget)
        return Session(visit);
    if (visit.target == kReportTarget)
        return Report(visit);
    if (visit.method != "GET" && visit.method != "HEAD")
        return NotAllowed("GET, HEAD");
    std::optional<Page> page = mSite.Read(visit.target);
    if (!page)
        return Text(404, "There is no such page.\n");
    return Make(200, page->type, std::move(page->content));
}

std::optional<Reply> Reception::RefuseSocket(const Visit& visit) const
{
    if (std::optional<Reply> refusal = RefuseStranger(visit))
        return refusal;
    if (visit.target != kSocketTarget)
        return Text(404, "There is no socket.\n");
    if (!visit.hasOrigin)
        return Text(403, "A socket is for pages of the desk.\n");
    if (!HasCookie(visit))
        return WithoutToken();
    return std::nullopt;
}

Reply Reception::Text(unsigned status, const char* text) const
{
    return Make(status, "text/plain; charset=utf-8", text);
}

std::optional<Reply> Reception::RefuseStranger(const Visit& visit) const
{
    if (visit.host != mAccess.Authority())
        return Text(421, "The desk answers at the address that it printed alone.\n");
    if (visit.hasOrigin && visit.origin != mAccess.Origin())
        return Text(403, "Pages of others get nothing here.\n");
    return std::nullopt;
}

/// A page that posts the token from its address gets the cookie, which its scripts never see; one that asks
/// is told whether it has it.
Reply Reception::Session(const Visit& visit) const
{
    if (visit.method == "GET")
        return HasCookie(visit) ? Text(200, "") : WithoutToken();
    if (visit.method != "POST")
        return NotAllowed("GET, POST");
    if (!visit.token || !mAccess.IsToken(*visit.token))
        return WithoutToken();
    Reply reply = Text(200, "");
    reply.fields.emplace_back("Set-Cookie", mAccess.SetCookie());
    return reply;
}

/// What the policy blocked is told to who looks at the traffic.
Reply Reception::Report(const Visit& visit) const
{
    if (visit.method != "POST")
        return NotAllowed("POST");
    if (!HasCookie(visit))
        return WithoutToken();
    Reply reply = Text(200, "");
    reply.report = ReportOf(visit.body);
    return reply;
}

Reply Reception::WithoutToken() const
{
    return Text(403, "Open the address that the desk printed when it started, with its token.\n");
}

Reply Reception::NotAllowed(const char* allowed) const
{
    Reply reply = Text(405, "Not that way.\n");
    reply.fields.emplace_back("Allow", allowed);
    return reply;
}

Reply Reception::Make(unsigned status, const char* type, std::string content) const
{
    std::string policy =
        "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self' ws://" +
        mAccess.Authority() +
        "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; require-trusted-types-for 'script'; "
        "trusted-types 'none'; report-uri /csp-report";
    return {status,
            std::move(content),
            {{"Content-Type", type},
             {"Cache-Control", "no-store"},
             {"Content-Security-Policy", std::move(policy)},
             {"Cross-Origin-Opener-Policy", "same-origin"},
             {"Cross-Origin-Resource-Policy", "same-origin"},
             {"Referrer-Policy", "no-referrer"},
             {"X-Content-Type-Options", "nosniff"}},
            {}};
}

}  // namespace Desk
