#include "Commands.h"
#include "Input.h"
#include "session/NotificationText.h"
#include "session/PlainReplay.h"
#include "session/ReadableReplay.h"
#include "session/SessionCheck.h"

#include <optional>

namespace AssetConnector {
namespace {

using Session::Json;
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

/// Masks what a file should not hold and the program does not print.
void MaskPasswords(Json& json, const std::string& name = {})
{
    const bool isEmpty = json.is_string() && json.get_ref<const std::string&>().empty();
    if (name == "ftpPassword" && !isEmpty && json != "***") {
        json = "(a password, not masked)";
    } else if (json.is_string()) {
        json = Session::WithoutPassword(json.get<std::string>());
    } else if (json.is_structured()) {
        for (auto& [key, value] : json.items())
            MaskPasswords(value, key);
    }
}

std::string TextOf(std::optional<Json> effect)
{
    if (!effect)
        return "no effect";
    MaskPasswords(*effect);
    return Session::DumpJson(*effect);
}

Status Check(Input& input, std::ostream& output)
{
    Session::SessionCheck check;
    const Status status = Play(input, Style::kSession, check);
    if (status != kDone || !check.FirstDifference())
        return status;
    output << input.Name() << ": line " << check.FirstDifference()->line << ": the effects differ\n"
           << "expected: " << TextOf(check.FirstDifference()->expected) << '\n'
           << "actual:   " << TextOf(check.FirstDifference()->actual) << '\n';
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
