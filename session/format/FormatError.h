#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace Session {

/// A line, a record or a value is not what the format says. The text repeats names, never a value that could
/// be a secret.
class FormatError : public std::runtime_error
{
public:
    /// \param text A zero in it, which would end it, becomes U+FFFD.
    explicit FormatError(std::string text) : std::runtime_error(WithoutZeros(std::move(text))) {}

private:
    static std::string WithoutZeros(std::string text)
    {
        for (std::size_t zero = text.find('\0'); zero != std::string::npos; zero = text.find('\0', zero))
            text.replace(zero, 1, "\uFFFD");
        return text;
    }
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
