#pragma once

#include "desk/Link.h"
#include "desk/Origin.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// The frames on the socket, as docs/panel-client.md has them.
namespace Desk {

/// The largest number that a page's JSON has exactly.
constexpr std::uint64_t kMostNumber = (std::uint64_t{1} << 53) - 1;

struct Hello
{
    PanelKind kind = PanelKind::kLibrary;
    std::optional<std::string> session;
    std::uint64_t heard = 0;
};

struct Raise
{
    std::string type;
    std::string xml;
    std::uint64_t number = 0;
};

/// A frame that means nothing here.
struct UnknownFrame
{
};

/// What makes no sense. \see Closing::reason.
struct FrameFault
{
    const char* reason;
};

using PageFrame = std::variant<Hello, Raise, UnknownFrame, FrameFault>;

/// \return What the text of a page says; total.
PageFrame ReadPageFrame(const std::string& text);

struct Welcome
{
    std::string session;
    std::string browserID;
    std::vector<std::string> handles;
    bool isResumed = false;
    std::uint64_t number = 0;
    std::uint64_t heard = 0;
};

Frame WriteWelcome(const Welcome& welcome);

/// \param type, xml UTF-8; each byte that is none becomes U+FFFD.
Frame WriteNotification(const std::string& type, const std::string& xml, std::uint64_t number);

Frame WriteHeard(std::uint64_t number);

Frame WriteState(const nlohmann::json& state);

/// \return Such as "library".
const char* NameOf(PanelKind kind);

}  // namespace Desk
