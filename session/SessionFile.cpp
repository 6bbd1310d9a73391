#include "session/SessionFile.h"

#include "session/Fields.h"
#include "session/Player.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

namespace Session {
namespace {

/// An effect's main key, and the keys that go with it.
struct EffectRow
{
    std::string_view key;
    std::array<const char*, 3> members;
};

constexpr EffectRow kEffects[] = {
    {"dispatcher", {"args"}}, {"notification", {"data"}}, {"post", {"station", "flag", "payload"}},
    {"hostCall", {"args"}},   {"exception", {}},          {"deliver", {"station", "payload"}},
    {"destroyed", {}},
};

const EffectRow* FindEffectRow(std::string_view key)
{
    const auto* const found = std::find_if(std::begin(kEffects), std::end(kEffects),
                                           [key](const EffectRow& row) { return row.key == key; });
    return found == std::end(kEffects) ? nullptr : found;
}

bool IsEffectKey(const std::string& key)
{
    return FindEffectRow(key) != nullptr;
}

const EffectRow* EffectIn(const Json& line)
{
    for (const auto& [key, value] : line.items())
        if (const EffectRow* const row = FindEffectRow(key))
            return row;
    return nullptr;
}

/// \throws FormatError unless the effect has exactly its keys.
void CheckEffect(const EffectRow& row, const Json& json)
{
    Fields effect(json);
    effect.Get(row.key.data());
    for (const char* const member : row.members)
        if (member != nullptr)
            effect.Get(member);
    effect.Finish();
}

template <class Value>
std::optional<Value> TakeStamp(Json& line, const char* name)
{
    const auto found = line.find(name);
    if (found == line.end())
        return std::nullopt;
    Value value{};
    Within(name, [&] { value = ValueReader::Read<Value>(*found); });
    line.erase(found);
    return value;
}

/// Takes out of the line what a recorder adds: when, in microseconds since it began, and on which thread.
/// Neither is played or compared. \return When. \throws FormatError
std::optional<std::uint64_t> TakeStamps(Json& line)
{
    const auto us = TakeStamp<std::uint64_t>(line, "us");
    TakeStamp<std::int32_t>(line, "thread");
    return us;
}

/// \return Whether there is another line.
bool ReadLine(std::istream& file, Line& line)
{
    if (!std::getline(file, line.text))
        return false;
    line.us.reset();
    if (++line.number == 1 && line.text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        line.text.erase(0, 3);
    return true;
}

void PlayLine(Line& line, Player& player, Observer& observer)
{
    const std::size_t begin = line.text.find_first_not_of(" \t\r");
    if (begin == std::string::npos)
        return;
    if (line.text[begin] == '#')
        return observer.OnComment(line);
    if (!observer.WantsExpected() && HasKey(line.text, &IsEffectKey))
        return;
    Json json = ParseJson(line.text);
    ValueReader::RequireObject(json);
    line.us = TakeStamps(json);
    if (const EffectRow* const row = EffectIn(json)) {
        CheckEffect(*row, json);
        return observer.OnExpected(line, json);
    }
    const BoundCall input = player.Read(json);
    observer.OnInput(line, json, input);
    if (!observer.IsDone())
        player.Play(input);
}

}  // namespace

bool IsEffect(const Json& line)
{
    return EffectIn(line) != nullptr;
}

void PlaySession(std::istream& file, Style style, Observer& observer)
{
    Player player(style, [&observer](const std::string& effect) { observer.OnEffect(effect); });
    Line line;
    while (!observer.IsDone()) {
        if (!ReadLine(file, line))
            return observer.OnEnd();
        try {
            PlayLine(line, player, observer);
        } catch (const FormatError& error) {
            observer.OnBadLine();
            throw SessionError(line.number, error.what());
        }
    }
}

}  // namespace Session
