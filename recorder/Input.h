#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "session/format/ConnectorKinds.h"
#include "session/format/JsonText.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Recording {

/// The place of a connector in Session::kConnectorKinds.
using Kind = std::size_t;
constexpr std::size_t kKindCount = std::size(Session::kConnectorKinds);

/// What the host answered to a question of the library.
struct Answer
{
    const char* operation;
    std::string question;  ///< As Session::TextOfQuestion has it.
    std::string answer;    ///< JSON.
    bool isUsual;          ///< The host of a replay answers so of itself.
};

/// What an operation of the host threw.
struct Thrown
{
    const char* operation;
    std::uint32_t call;  ///< Of this operation in the input, from 1.
    std::string what;
};

/// What an input changes of what later ones rely on.
struct Change
{
    std::optional<Kind> created;
    std::optional<Kind> destroyed;
    std::optional<std::pair<Kind, bool>> hasDispatcher;
    std::optional<bool> registered;     ///< All requests of the catalogue.
    std::optional<bool> readsFromDisk;  ///< The library connector.
};

/// Something done to the library, with everything that came of it. Belongs to the thread on which it happens
/// until it is finished, then to the writer.
struct Input
{
    enum class Type
    {
        kInput,
        kDelivery,  ///< Of a posted message: one line, part of a "ui" input.
        kOutside,   ///< What the library did outside of any input that can be seen: comments.
        kState,     ///< A change without a line.
        kNote,      ///< A comment.
    };

    Type type = Type::kInput;
    std::uint64_t begun = 0;  ///< Microseconds since the recording began.
    int thread = 0;
    bool isNested = false;  ///< Begun inside another one on the same thread.
    int overlaps = 0;       ///< How many other threads were in an input when it began.

    Session::JsonText text;  ///< Its line and those of its effects.
    std::size_t lines = 0;
    bool isLost = false;      ///< The text is gone; it still counts.
    std::size_t missed = 0;   ///< Others that began behind it, for which there was no memory.
    unsigned missedEnds = 0;  ///< A bit for each connector whose end is among these.

    std::vector<Answer> answers;
    std::vector<std::string> browserIDs;
    std::vector<ferrite::utility::Guid> guids;
    std::size_t answerBytes = 0;
    std::vector<std::pair<const char*, std::uint32_t>> calls;  ///< How often each operation was called.
    std::vector<Thrown> thrown;
    bool endedByException = false;

    std::vector<std::size_t> posts;    ///< What the posted messages say, hashed.
    std::size_t delivered = 0;         ///< The same of the delivered one.
    bool showsReading = false;         ///< What it tells panels shows how the library connector reads.
    std::optional<bool> readFromDisk;  ///< What was seen of that.
    bool hasHalfPair = false;          ///< Half a surrogate pair is in the text, which JSON cannot carry.
    Change change;

    // While it is not finished:
    bool isRunning = false;
    bool isFinished = false;
    bool isSeries = false;      ///< Goes on with the next registration of a request; anything else ends it.
    bool isPassedOver = false;  ///< Later ones were written before it.
    std::uint64_t stopped = 0;  ///< When it was last left; it waits then for what else belongs to it.
    const void* message = nullptr;
    std::string station;
    unsigned kindsReached = 0;  ///< A bit for each connector that got the message.
    const UTF16String* request = nullptr;
    bool hasMediaInfo = false;  ///< The host made one.
};

}  // namespace Recording
