#include "desk/Tools.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/SavedSelection.h"
#include "protocol/Model.h"
#include "session/Fields.h"
#include "session/SimulatedObjects.h"

#include <xercesc/dom/DOMException.hpp>

#include <algorithm>
#include <exception>
#include <limits>
#include <type_traits>
#include <utility>

namespace Desk {
namespace {

using Session::FormatError;
using Json = nlohmann::json;

/// How long panels may refuse that the application ends.
constexpr std::chrono::milliseconds kToRefuse{2000};

template <class Value>
struct IsVector : std::false_type
{
};
template <class Value>
struct IsVector<std::vector<Value>> : std::true_type
{
};

/// \return Whether the value is one of that type, and in its range: a conversion alone would cut numbers.
template <class Value>
bool Holds(const Json& json)
{
    if constexpr (IsVector<Value>::value)
        return json.is_array() && std::all_of(json.begin(), json.end(), Holds<typename Value::value_type>);
    else if constexpr (std::is_same_v<Value, bool>)
        return json.is_boolean();
    else if constexpr (std::is_integral_v<Value>)
        return json.is_number_unsigned() &&
               json.get<std::uint64_t>() <= static_cast<std::uint64_t>(std::numeric_limits<Value>::max());
    else if constexpr (std::is_floating_point_v<Value>)
        return json.is_number();
    else
        return json.is_string();
}

/// \throws FormatError for a member of another type.
template <class Value>
std::optional<Value> Optional(const Json& with, const char* member)
{
    const auto found = with.find(member);
    if (found == with.end() || found->is_null())
        return std::nullopt;
    if (!Holds<Value>(*found))
        throw FormatError(std::string(member) + " is of the wrong type, or out of range");
    return found->get<Value>();
}

template <class Value>
Value Required(const Json& with, const char* member)
{
    std::optional<Value> value = Optional<Value>(with, member);
    if (!value)
        throw FormatError(std::string(member) + " is missing");
    return *std::move(value);
}

}  // namespace

const Tools::Row Tools::kCommands[] = {
    {"callback", &Tools::Callback}, {"notify", &Tools::Notify},   {"exit", &Tools::Exit},
    {"step", &Tools::Step},         {"raise", &Tools::RaiseIt},   {"pace", &Tools::Pace},
    {"faults", &Tools::SetFaults},  {"inspect", &Tools::Inspect}, {"save", &Tools::Save},
};

Tools::Tools(Needs needs) : mNeeds(std::move(needs)) {}

void Tools::Join(const LinkRef& link, const ToolHello& hello)
{
    mPages.push_back(link);
    mNeeds.traffic.Welcome(link, hello);
}

bool Tools::Leave(const LinkRef& link)
{
    const auto page = std::find(mPages.begin(), mPages.end(), link);
    if (page == mPages.end())
        return false;
    mPages.erase(page);
    mNeeds.traffic.Detach(link);
    return true;
}

bool Tools::Has(const LinkRef& link) const
{
    return std::find(mPages.begin(), mPages.end(), link) != mPages.end();
}

void Tools::Send(const Frame& frame) const
{
    for (const LinkRef& page : mPages)
        page->Send(frame);
}

void Tools::Do(const LinkRef& link, const Command& command)
{
    try {
        const auto* const row =
            std::find_if(std::begin(kCommands), std::end(kCommands),
                         [&command](const Row& each) { return each.name == command.name; });
        if (row == std::end(kCommands))
            throw FormatError("there is no command " + command.name);
        if (const std::optional<Json> value = (this->*row->function)(command.with, {link, command.number}))
            link->Send(WriteDone(command.number, *value));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& exception) {
        link->Send(WriteFailure(command.number, exception.what()));
    } catch (const xercesc::DOMException&) {
        link->Send(WriteFailure(command.number, "a name in the record is no name of an element"));
    }
}

std::optional<Json> Tools::Callback(const Json& with, const Asker& /*asker*/)
{
    const auto to = Optional<std::string>(with, "to");
    const std::optional<PanelKind> kind = to ? KindOf(*to) : std::nullopt;
    if (to && !kind)
        throw FormatError("to is library or mediaCollection");
    mNeeds.host.Callback(Required<std::string>(with, "callback"), with.value("args", Json::array()), kind);
    return Json();
}

std::optional<Json> Tools::Notify(const Json& with, const Asker& /*asker*/)
{
    const auto identifier = Required<std::string>(with, "identifier");
    const Protocol::Event* const event = Protocol::FindEvent(Protocol::ThisModel(), identifier);
    if (event == nullptr || event->kind != "notification")
        throw FormatError(identifier + " is no notification");
    AC::ACMessage message;
    mNeeds.host.Aside(
        [&] { message = Session::ValueReader::Read<AC::ACMessage>(with.value("record", Json::object())); });
    const auto encode = Optional<bool>(with, "decoded").value_or(false)
                            ? AC::ACMessageEncoder::EncodeDecodedUTF8
                            : AC::ACMessageEncoder::EncodeUTF8;
    std::string xml;
    mNeeds.host.Aside([&] { xml = encode(message, AC::kNotificationRoot); });
    mNeeds.host.Tell(identifier, xml);
    return Json{{"xml", xml}};
}

std::optional<Json> Tools::Exit(const Json& /*with*/, const Asker& /*asker*/)
{
    HearRefusal();
    mRefusedBy.clear();
    mIsExitAsked = true;
    AC::ACMessage message;
    message.header.taskID = ferrite::utility::Guid::CreateUnique();
    message.header.msgID = ferrite::utility::Guid::CreateUnique();
    for (const char16_t* const browserID : {u"", kCollectionID}) {  // a panel hears what may be its own
        message.header.browserID = browserID;
        mNeeds.host.Tell(ferrite::utility::UTF16to8(AC::kPlexaEventType_NotificationAppExit),
                         AC::ACMessageEncoder::EncodeUTF8(message, AC::kNotificationRoot));
    }
    mExit = std::make_shared<char>();
    mNeeds.timer.PostAfter(kToRefuse, [this, exit = std::weak_ptr<char>(mExit)] {
        if (exit.expired())
            return;
        mNeeds.host.FlushRecording();
        HearRefusal();
        if (mIsExitAsked)
            mNeeds.end();
    });
    mNeeds.changed();
    return Json();
}

std::optional<Json> Tools::Step(const Json& /*with*/, const Asker& /*asker*/)
{
    GetPlayback().Step();
    return Json();
}

std::optional<Json> Tools::RaiseIt(const Json& /*with*/, const Asker& /*asker*/)
{
    GetPlayback().RaiseIt();
    return Json();
}

std::optional<Json> Tools::Pace(const Json& with, const Asker& /*asker*/)
{
    const auto speed = Optional<double>(with, "speed");
    if (speed && !(*speed > 0 && *speed <= 1000))
        throw FormatError("the speed is a number above 0, up to 1000");
    GetPlayback().SetPace(speed, Optional<bool>(with, "isStepping"));
    return Json();
}

std::optional<Json> Tools::SetFaults(const Json& with, const Asker& /*asker*/)
{
    Faults::Settings settings;
    settings.seed = Optional<std::uint32_t>(with, "seed").value_or(1);
    settings.percent = Required<int>(with, "percent");
    if (settings.percent > 100)
        throw FormatError("percent is a number from 0 to 100");
    for (const auto& name :
         Optional<std::vector<std::string>>(with, "kinds").value_or(std::vector<std::string>())) {
        const std::optional<Fault> kind = FaultOf(name);
        if (!kind)
            throw FormatError("there is no fault " + name);
        if (std::find(settings.kinds.begin(), settings.kinds.end(), *kind) == settings.kinds.end())
            settings.kinds.push_back(*kind);
    }
    const auto browserID = Required<std::string>(with, "browserID");
    if (!mNeeds.disturb(browserID, settings))
        throw FormatError("no panel " + browserID + " is connected");
    return Json();
}

std::optional<Json> Tools::Inspect(const Json& with, const Asker& /*asker*/)
{
    const auto number = Required<std::uint64_t>(with, "number");
    const std::optional<std::string> xml = mNeeds.traffic.RequestText(number);
    if (!xml)
        throw FormatError("the entry " + std::to_string(number) + " is no request, or is gone");
    AC::ACMessage message;
    AC::ParseError error;
    bool isDecoded = false;
    mNeeds.host.Aside([&] {
        isDecoded = AC::ACMessageDecoder::DecodeXMLString(ferrite::utility::UTF8to16(*xml), message, error);
    });
    if (!isDecoded)
        return Json{{"problem", "line " + std::to_string(error.line) + ", column " +
                                    std::to_string(error.column) + ": " +
                                    ferrite::utility::UTF16to8(error.reason)}};
    const Session::ValueWriter writer = Session::SimulatedObjects::WriterFor(Session::Style::kSession);
    Json value = Json::object();
    value["record"] = Session::ParseJson(writer.TextOf(message));
    return value;
}

std::optional<Json> Tools::Save(const Json& with, const Asker& asker)
{
    const auto numbers = Required<std::vector<std::uint64_t>>(with, "numbers");
    mNeeds.host.FlushRecording();
    const std::vector<Traffic::Passage> passages = mNeeds.traffic.Passages(numbers);
    if (passages.empty())
        throw FormatError("none of these is an input that is kept; select requests or callbacks");
    const std::string text = SessionOf(passages);
    mNeeds.check(text, [asker, text](const std::string& why) {
        Json value = {{"text", text}, {"standsAlone", why.empty()}};
        if (!why.empty())
            value["why"] = why;
        asker.link->Send(WriteDone(asker.number, value));
    });
    return std::nullopt;
}

Playback& Tools::GetPlayback() const
{
    Playback* const playback = mNeeds.host.GetPlayback();
    if (playback == nullptr)
        throw FormatError("no session is played; start the desk with --play SESSION");
    return *playback;
}

void Tools::HearRefusal()
{
    const std::string refusedBy =
        mNeeds.traffic.WithOverview([](Overview& overview) { return overview.TakeRefusal(); });
    if (!mIsExitAsked || refusedBy.empty())
        return;
    mRefusedBy = refusedBy;
    mIsExitAsked = false;
}

Json Tools::ExitState()
{
    HearRefusal();
    if (mIsExitAsked)
        return {{"isAsked", true}};
    return mRefusedBy.empty() ? Json() : Json{{"refusedBy", mRefusedBy}};
}

}  // namespace Desk
