#pragma once

#include <stdexcept>
#include <string>

namespace Session {

/// A line, a record or a value is not what the format says. The text repeats names, never a value that could
/// be a secret.
class FormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Runs the action; a FormatError that it throws comes out with the place in front.
template <class Action>
void Within(const std::string& place, Action&& action)
{
    try {
        action();
    } catch (const FormatError& error) {
        throw FormatError(place + ": " + error.what());
    }
}

}  // namespace Session
