#pragma once

#include "session/Connectors.h"
#include "session/Fields.h"
#include "session/Operations.h"
#include "session/Recorder.h"
#include "session/SimulatedHost.h"
#include "session/format/Json.h"

namespace Session {

/// Plays the inputs of a session through the library, on a simulated host of its own, which is installed as
/// long as the player lives. The XML platform is initialised by the caller. One thread.
class Player
{
public:
    /// What stands between the library and the simulated host.
    struct Between
    {
        SimulatedHost::Wrap services;
        Connectors::Factory connectors;
    };

    /// \param sink Gets each effect as it happens. \param between Nothing, if it is left empty.
    Player(Style style, Recorder::Sink sink, const Between& between = {});

    /// Reads an input. \return What plays it, once, before the next input is read.
    /// \throws FormatError when it cannot be played; nothing has happened then.
    BoundCall Read(const Json& line);

    /// Plays it. An exception that reaches the caller of the library becomes an effect.
    /// \throws FormatError when the sink refuses an effect.
    void Play(const BoundCall& input);

    SimulatedHost& GetHost() { return mHost; }
    const Connectors& GetConnectors() const { return mConnectors; }

    /// How the effects are written.
    const ValueWriter& Writer() const { return mRecorder.Writer(); }

private:
    using InputReader = BoundCall (Player::*)(Fields& line);
    struct InputRow
    {
        const char* key;
        InputReader read;
    };
    static const InputRow kInputs[];

    BoundCall ReadCreate(Fields& line);
    BoundCall ReadRelease(Fields& line);
    BoundCall ReadRegister(Fields& line);
    BoundCall ReadPanel(Fields& line);
    BoundCall ReadStation(Fields& line);
    BoundCall ReadCallback(Fields& line);
    BoundCall ReadHost(Fields& line);
    BoundCall ReadUI(Fields& line);
    BoundCall ReadCall(Fields& line);

    /// \return The place of the connector that the member names.
    static std::size_t ReadConnector(Fields& line, const char* member);

    Recorder mRecorder;
    SimulatedHost mHost;
    Connectors mConnectors;
};

}  // namespace Session
