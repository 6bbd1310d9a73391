#include "desk/Frames.h"

#include "session/format/Json.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <nlohmann/json.hpp>

#include <utility>

namespace Desk {
namespace {

using Json = nlohmann::json;

/// Records nest; what nests deeper would only take memory.
constexpr int kDeepest = 256;

/// How large a frame of several entries becomes, if none is larger by itself.
constexpr std::size_t kLargeFrame = std::size_t{1} << 18;

constexpr const char* kToolKind = "desk";

constexpr const char* kKindNames[] = {"library", "mediaCollection"};

struct TooDeep
{
};

/// \return Discarded when the text is no JSON or nests too deeply.
Json Parse(const std::string& text)
{
    const auto refuseDepth = [](int depth, Json::parse_event_t, Json&) {
        if (depth > kDeepest)
            throw TooDeep();
        return true;
    };
    try {
        return Json::parse(text, refuseDepth, false);
    } catch (const TooDeep&) {
        return Json(Json::value_t::discarded);
    }
}

std::optional<std::uint64_t> NumberOf(const Json& object, const char* member)
{
    const auto found = object.find(member);
    if (found == object.end() || !found->is_number_unsigned())
        return std::nullopt;
    const auto number = found->get<std::uint64_t>();
    return number <= kMostNumber ? std::optional(number) : std::nullopt;
}

std::optional<std::string> TextOf(const Json& object, const char* member)
{
    const auto found = object.find(member);
    if (found == object.end() || !found->is_string())
        return std::nullopt;
    return found->get<std::string>();
}

PageFrame ReadHello(const Json& json)
{
    if (!json.is_object())
        return FrameFault{"the hello is no object"};
    Hello hello;
    const std::string name = TextOf(json, "kind").value_or("");
    if (name == kToolKind)
        return ToolHello{NumberOf(json, "heard").value_or(0), json.value("traffic", Json()) != false};
    const std::optional<PanelKind> kind = KindOf(name);
    if (!kind)
        return FrameFault{"the hello's kind must be library, mediaCollection or desk"};
    hello.kind = *kind;
    hello.session = TextOf(json, "session");
    if (!hello.session)
        return hello;
    const std::optional<std::uint64_t> heard = NumberOf(json, "heard");
    if (!heard)
        return FrameFault{"a hello that goes on without the number of what was heard"};
    hello.heard = *heard;
    return hello;
}

PageFrame ReadCommand(const Json& json)
{
    std::optional<std::string> name = TextOf(json, "do");
    const std::optional<std::uint64_t> number = NumberOf(json, "number");
    Json with = json.value("with", Json::object());
    if (!name || !number || !with.is_object())
        return FrameFault{"a command without name or number, or with what is no object"};
    return Command{std::move(*name), std::move(with), *number};
}

Frame Write(const Json& json)
{
    return boost::make_shared<const std::string>(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace

PageFrame ReadPageFrame(const std::string& text)
{
    const Json json = Parse(text);
    if (json.is_discarded())
        return FrameFault{"a frame is no JSON, or nests too deeply"};
    if (!json.is_object())
        return FrameFault{"a frame is no object"};
    if (const auto hello = json.find("hello"); hello != json.end())
        return ReadHello(*hello);
    if (json.find("do") != json.end())
        return ReadCommand(json);
    if (json.find("raise") == json.end())
        return UnknownFrame{};
    std::optional<std::string> type = TextOf(json, "raise");
    std::optional<std::string> xml = TextOf(json, "xml");
    const std::optional<std::uint64_t> number = NumberOf(json, "number");
    if (!type || !xml || !number || *number == 0)
        return FrameFault{"a request without type, text or number"};
    return Raise{std::move(*type), std::move(*xml), *number};
}

Frame WriteWelcome(const Welcome& welcome)
{
    return Write({{"welcome",
                   {{"session", welcome.session},
                    {"browserID", welcome.browserID},
                    {"handles", welcome.handles},
                    {"resumed", welcome.isResumed},
                    {"number", welcome.number},
                    {"heard", welcome.heard}}}});
}

Frame WriteNotification(const std::string& type, const std::string& xml, std::uint64_t number)
{
    return Write({{"notify", type}, {"xml", xml}, {"number", number}});
}

Frame WriteHeard(std::uint64_t number)
{
    return Write({{"heard", number}});
}

Frame WriteState(const Json& state)
{
    return Write({{"state", state}});
}

Frame WriteToolWelcome(std::uint64_t last)
{
    return Write({{"welcome", {{"kind", kToolKind}, {"number", last}}}});
}

std::vector<Frame> WriteTraffic(const std::vector<std::string>& entries)
{
    std::vector<Frame> frames;
    std::string text;
    const auto flush = [&frames, &text] {
        if (!text.empty())
            frames.push_back(
                boost::make_shared<const std::string>("{\"traffic\":[" + std::exchange(text, {}) + "]}"));
    };
    for (const std::string& entry : entries) {
        if (text.size() + entry.size() > kLargeFrame)
            flush();
        text += (text.empty() ? "" : ",") + entry;
    }
    flush();
    return frames;
}

Frame WriteDone(std::uint64_t number, const Json& value)
{
    std::string text;
    try {
        text = Session::DumpJson(value);  // which does not recurse: a record may nest deeply
    } catch (const Json::exception&) {    // no UTF-8
        text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    return boost::make_shared<const std::string>("{\"done\":" + std::to_string(number) +
                                                 ",\"value\":" + text + '}');
}

Frame WriteFailure(std::uint64_t number, const std::string& error)
{
    return Write({{"done", number}, {"error", error}});
}

std::optional<PanelKind> KindOf(const std::string& name)
{
    for (const PanelKind kind : kPanelKinds)
        if (name == NameOf(kind))
            return kind;
    return std::nullopt;
}

const char* NameOf(PanelKind kind)
{
    return kKindNames[IndexOf(kind)];
}

}  // namespace Desk
