#include "session/Player.h"

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "session/HostSettings.h"

#include <utility>

namespace Session {
namespace {

using ferrite::utility::ImmutableString;

boost::shared_ptr<Kiln::Message> ReadStationMessage(Fields& line)
{
    const auto name = line.Read<std::string>("message");
    if (name == "Ridge::TandemEvent")
        return boost::make_shared<Ridge::TandemEvent>(line.Read<UTF16String>("type"),
                                                      line.Read<UTF16String>("data"));
    if (name == "Ridge::AddTandemListenerEvent")
        return boost::make_shared<Ridge::AddTandemListenerEvent>();
    if (name == "Ridge::RemoveTandemListenerEvent")
        return boost::make_shared<Ridge::RemoveTandemListenerEvent>();
    throw FormatError("unknown message \"" + name + '"');
}

}  // namespace

const Player::InputRow Player::kInputs[] = {
    {"create", &Player::ReadCreate}, {"release", &Player::ReadRelease}, {"register", &Player::ReadRegister},
    {"panel", &Player::ReadPanel},   {"station", &Player::ReadStation}, {"callback", &Player::ReadCallback},
    {"host", &Player::ReadHost},     {"ui", &Player::ReadUI},           {"call", &Player::ReadCall},
};

Player::Player(Style style, Recorder::Sink sink, const Between& between)
    : mRecorder(style, std::move(sink)),
      mHost(mRecorder, between.services),
      mConnectors(mRecorder, between.connectors)
{
}

BoundCall Player::Read(const Json& json)
{
    Fields line(json);
    for (const InputRow& row : kInputs) {
        if (line.Find(row.key) == nullptr)
            continue;
        BoundCall input = (this->*row.read)(line);
        line.Finish();
        return input;
    }
    throw FormatError("neither an input nor an effect");
}

void Player::Play(const BoundCall& input)
{
    try {
        input.run();
    } catch (const FormatError&) {
        throw;  // of whoever takes the effects
    } catch (...) {
        mRecorder.RecordException(TextOfCurrentException());
    }
}

std::size_t Player::ReadConnector(Fields& line, const char* member)
{
    return Connectors::Find(line.Read<std::string>(member));
}

BoundCall Player::ReadCreate(Fields& line)
{
    const std::size_t which = ReadConnector(line, "create");
    mConnectors.RequireAlive(which, false);
    return {[this, which] { mConnectors.Create(which); }, {}};
}

BoundCall Player::ReadRelease(Fields& line)
{
    const std::size_t which = ReadConnector(line, "release");
    mConnectors.RequireAlive(which, true);
    return {[this, which] { mConnectors.Release(which); }, {}};
}

BoundCall Player::ReadRegister(Fields& line)
{
    return {line.Read<bool>("register") ? &AC::AddTandemEvents : &AC::RemoveTandemEvents, {}};
}

BoundCall Player::ReadPanel(Fields& line)
{
    return {[this, type = line.Read<UTF16String>("panel"), data = line.Read<UTF16String>("data")] {
                mHost.GetPanelEvents().Raise(type, data);
            },
            {}};
}

BoundCall Player::ReadStation(Fields& line)
{
    const auto name = line.Read<std::string>("station");
    const ImmutableString station = name == "panel" ? Ridge::GetPlexaStationID() : ImmutableString(name);
    return {[this, station, message = ReadStationMessage(line)] {
                mHost.GetStations().BroadcastMessage(station, *message);
            },
            {}};
}

BoundCall Player::ReadCallback(Fields& line)
{
    const auto name = line.Read<std::string>("callback");
    const CallbackOperation* const callback = FindCallback(name);
    if (callback == nullptr)
        throw FormatError("unknown callback \"" + name + '"');
    const std::size_t which = ReadConnector(line, "to");
    mConnectors.RequireAlive(which, true);
    BoundCall call;
    Within("args", [&] { call = callback->bind(line.Get("args"), mConnectors[which]); });
    return call;
}

BoundCall Player::ReadHost(Fields& line)
{
    return {ReadHostSettings(line.Get("host"), {mHost, mConnectors}), {}};
}

BoundCall Player::ReadUI(Fields& line)
{
    if (!line.Read<bool>("ui"))
        throw FormatError("ui: expected true");
    return {[this] { mHost.GetStations().DeliverPosted(); }, {}};
}

BoundCall Player::ReadCall(Fields& line)
{
    const auto name = line.Read<std::string>("call");
    const ExportedFunction* const function = FindExportedFunction(name);
    if (function == nullptr)
        throw FormatError("unknown function \"" + name + '"');
    BoundCall call;
    Within("args", [&] { call = function->bind(line.Get("args")); });
    return call;
}

}  // namespace Session
