#pragma once

#include "desk/Origin.h"
#include "recorder/Recorder.h"

#include <string>
#include <vector>

/// What the desk knows of the lines of its recording and a replay need not: comments of it, which Traffic
/// reads again. \see Mark
namespace Desk::Marks {

/// How such a comment begins; JSON follows, an object with one of these members:
///     raises: IDENTIFIER, by: BROWSER ID   until `raised`, a request of that type is this page's; with
///                                          answered: true if the host answers it beside the connectors
///     raised: IDENTIFIER
///     next: MARK                           of the request that comes next
///     last: MARK                           of the line before
///     note: MARK                           of no line
constexpr const char* kPrefix = "desk: ";

inline constexpr const char* kHeldBack = "held back";
inline constexpr const char* kUnhandled = "unhandled";
inline constexpr const char* kNotInSession = "not in the session";

/// \param member One of the last three above. \param mark One line of UTF-8.
void Put(Recording::Recorder& recorder, const char* member, const std::string& mark);

/// A page's request is being raised as long as this object lives.
class Raising
{
public:
    /// All outlive it. \param handles The requests that the host answers beside the connectors.
    Raising(Recording::Recorder& recorder, const Origin& asker, const std::string& type,
            const std::vector<std::string>& handles);
    ~Raising();
    Raising(const Raising&) = delete;
    Raising& operator=(const Raising&) = delete;

private:
    Recording::Recorder& mRecorder;
    const std::string& mType;
};

}  // namespace Desk::Marks
