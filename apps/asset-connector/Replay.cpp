#include "Commands.h"
#include "Input.h"
#include "session/PlainReplay.h"
#include "session/ReadableReplay.h"
#include "session/SessionCheck.h"

#include <algorithm>
#include <cstddef>

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

/// Where two long texts part, which nobody sees at a glance.
void TellWhereTheyPart(const std::string& expected, const std::string& actual, std::ostream& output)
{
    constexpr std::size_t kSeenAtAGlance = 150;
    constexpr std::size_t kAround = 30;
    const std::size_t shorter = std::min(expected.size(), actual.size());
    const auto parted = std::mismatch(
        expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(shorter), actual.begin());
    const auto at = static_cast<std::size_t>(parted.first - expected.begin());
    if (at < kSeenAtAGlance)
        return;
    const auto around = [at](const std::string& text) {
        std::size_t begin = at - kAround;
        while ((static_cast<unsigned char>(text[begin]) & 0xC0U) == 0x80U)  // inside of a character
            --begin;
        std::size_t end = std::min(at + kAround, text.size());
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
            ++end;
        return "\xE2\x80\xA6" + text.substr(begin, end - begin) + "\xE2\x80\xA6";
    };
    output << "they part at byte " << at << ":\n  expected " << around(expected) << "\n  actual   "
           << around(actual) << '\n';
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
    const auto& [line, expected, actual] = *check.FirstDifference();
    output << input.Name() << ": line " << line << ": the effects differ\n"
           << "expected: " << expected << '\n'
           << "actual:   " << actual << '\n';
    TellWhereTheyPart(expected, actual, output);
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
