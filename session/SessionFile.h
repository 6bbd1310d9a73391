#pragma once

#include "session/Operations.h"
#include "session/format/Json.h"
#include "session/format/ValueWriter.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <stdexcept>
#include <string>

namespace Session {

/// A line of a session file, without its line feed.
struct Line
{
    std::size_t number = 0;  ///< From 1.
    std::string text;
    std::optional<std::uint64_t> us;  ///< When an input happened, where it says so.
};

/// A line that is neither an input nor an effect nor to be skipped, or that cannot be played.
class SessionError : public std::runtime_error
{
public:
    SessionError(std::size_t line, const std::string& reason) : std::runtime_error(reason), mLine(line) {}

    std::size_t LineNumber() const noexcept { return mLine; }

private:
    std::size_t mLine;
};

/// Sees a session while it is played.
class Observer
{
public:
    virtual ~Observer() = default;

    /// A line that begins with '#'.
    virtual void OnComment(const Line& /*line*/) {}

    /// An input that is about to be played. \param json The line's value. \param input Its typed arguments.
    virtual void OnInput(const Line& line, const Json& json, const BoundCall& input) = 0;

    /// Something that the library did. \param effect JSON on one line, in session format or the readable form
    /// of it.
    virtual void OnEffect(const std::string& effect) = 0;

    /// Whether the effects of the file are wanted. When not, a line with the key of an effect is skipped
    /// whatever else the object holds.
    virtual bool WantsExpected() const { return false; }

    /// An effect of the file, which may be changed.
    virtual void OnExpected(const Line& /*line*/, Json& /*effect*/) {}

    /// The file was played to its end.
    virtual void OnEnd() {}

    /// A bad line ends the session here.
    virtual void OnBadLine() {}

    /// Asked after each of these calls; true ends the session.
    virtual bool IsDone() const { return false; }
};

/// \return Whether the object has the key of an effect.
bool IsEffect(const Json& line);

/// Plays a session file line by line; an input is read when all before it have been played. The XML platform
/// is initialised by the caller, and no host is installed.
/// \throws SessionError for a bad line: all before it have been played, nothing of it or after it.
void PlaySession(std::istream& file, Style style, Observer& observer);

}  // namespace Session
