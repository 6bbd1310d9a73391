#pragma once

#include "desk/Link.h"
#include "desk/Origin.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// The frames on the socket, as docs/panel-client.md has them, and those of tool pages, as docs/desk.md has.
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

/// A tool page begins.
struct ToolHello
{
    std::uint64_t heard = 0;  ///< The number of the last entry that it has.
    bool wantsTraffic = true;
};

/// What a tool page wants.
struct Command
{
    std::string name;
    nlohmann::json with;  ///< An object.
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

using PageFrame = std::variant<Hello, Raise, ToolHello, Command, UnknownFrame, FrameFault>;

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

/// \param last The number of the last entry.
Frame WriteToolWelcome(std::uint64_t last);

/// \param entries JSON each. \return As few frames as are not too large.
std::vector<Frame> WriteTraffic(const std::vector<std::string>& entries);

Frame WriteDone(std::uint64_t number, const nlohmann::json& value);

/// \param error One line that says what is wrong and what to do.
Frame WriteFailure(std::uint64_t number, const std::string& error);

/// \return The kind of that name.
std::optional<PanelKind> KindOf(const std::string& name);

/// \return Such as "library".
const char* NameOf(PanelKind kind);

}  // namespace Desk
