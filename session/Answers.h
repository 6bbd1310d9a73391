#pragma once

#include "session/ValueReader.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Session {

/// What ReadXMPFromCache gives, and puts into the holder; without a packet the holder stays as it is.
struct CachedPacket
{
    Ridge::ResultCode result = 0;
    std::optional<std::string> packet;
};
CachedPacket ReadCachedPacket(const Json& json);

/// What a session says that the host answers, question by question.
class Answers
{
public:
    Answers() = default;

    /// Reads an array of [operation, arguments, answer]. \throws FormatError
    explicit Answers(const Json& json);

    bool IsEmpty() const { return mAnswers.empty(); }

    /// \param question The arguments, as TextOfQuestion has them.
    /// \return The next answer to this question, of several the last one again and again; null without any.
    const Json* Next(std::string_view operation, const std::string& question);

    /// \return Whether the library asks its host by that name.
    static bool IsQuestion(std::string_view operation);

private:
    using Key = std::pair<std::string, std::string>;
    struct Series
    {
        std::vector<Json> answers;
        std::size_t next = 0;
    };
    std::map<Key, Series> mAnswers;
};

}  // namespace Session
