#include "Commands.h"
#include "Input.h"
#include "session/PlainReplay.h"
#include "session/ReadableReplay.h"
#include "session/SessionCheck.h"

namespace AssetConnector {
namespace {

using Session::Style;

/// Plays the session and says what is wrong with it.
Status Play(Input& input, Style style, Session::Observer& observer)
{
    try {
        Session::PlaySession(input.Stream(), style, observer);
    } catch (const Session::SessionError& error) {
        Complain(input.Name() + ": line " + std::to_string(error.LineNumber()) + ": " + error.what());
        return kBad;
    }
    input.RequireGood();
    return kDone;
}

Status Check(Input& input, std::ostream& output)
{
    Session::SessionCheck check;
    const Status status = Play(input, Style::kSession, check);
    if (status == kDone && check.LostAt()) {
        output << input.Name() << ": line " << *check.LostAt()
               << ": lines were lost here; up to this line the effects are the same, nothing behind it was "
                  "compared\n";
        return kFailed;
    }
    if (status != kDone || !check.FirstDifference())
        return status;
    output << input.Name() << ": line " << check.FirstDifference()->line << ": the effects differ\n"
           << "expected: " << check.FirstDifference()->expected << '\n'
           << "actual:   " << check.FirstDifference()->actual << '\n';
    return kFailed;
}

}  // namespace

Status Replay(const std::string& file, ReplayMode mode, bool coloured, std::ostream& output)
{
    Input input(file);
    switch (mode) {
        case ReplayMode::kCheck:
            return Check(input, output);
        case ReplayMode::kReadable: {
            Session::ReadableReplay readable(output, coloured);
            return Play(input, Style::kReadable, readable);
        }
        default: {
            Session::PlainReplay plain(output);
            return Play(input, Style::kSession, plain);
        }
    }
}

}  // namespace AssetConnector
