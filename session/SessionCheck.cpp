#include "session/SessionCheck.h"

#include "session/NotificationText.h"
#include "session/format/Passwords.h"

#include <string>
#include <utility>
#include <vector>

namespace Session {
namespace {

constexpr const char* kNoEffect = "no effect";

/// Calls visit for the value and everything in it, with the name of the member or an empty one. Does not
/// recurse.
template <class Visit>
void ForEachValue(Json& root, Visit visit)
{
    std::vector<std::pair<std::string, Json*>> pending{{"", &root}};
    while (!pending.empty()) {
        const auto [name, json] = std::move(pending.back());
        pending.pop_back();
        visit(name, *json);
        if (json->is_structured())
            for (auto& [key, value] : json->items())
                pending.emplace_back(json->is_object() ? key : std::string(), &value);
    }
}

/// No host tells whether saving must look for a newer file: what was recorded in one does not say it.
void LeaveOutWhatIsNotTold(Json& expected, Json& actual)
{
    static constexpr const char* kNotTold = "needSavePreCheck";
    bool isTold = false;
    ForEachValue(expected,
                 [&isTold](const std::string& name, Json& /*value*/) { isTold |= name == kNotTold; });
    if (!isTold)
        ForEachValue(actual, [](const std::string& /*name*/, Json& value) {
            if (value.is_object())
                value.erase(kNotTold);
        });
}

bool SameEffect(const Json& expected, const Json& actual)
{
    if (DumpJson(expected) == DumpJson(actual))  // the library's own comparison recurses
        return true;
    const auto expectedData = expected.find("data");
    const auto actualData = actual.find("data");
    return expectedData != expected.end() && actualData != actual.end() &&
           expected.at("notification") == actual.at("notification") && expectedData->is_string() &&
           SameNotificationText(expectedData->get_ref<const std::string&>(),
                                actualData->get_ref<const std::string&>());
}

/// Masks what a file should not hold and nobody prints. \return The text.
std::string MaskedText(Json& effect)
{
    ForEachValue(effect, [](const std::string& name, Json& value) {
        if (!value.is_string())
            return;
        auto& text = value.get_ref<std::string&>();
        if (name == "ftpPassword" && !text.empty() && text != "***")
            text = "(a password, not masked)";
        else
            text = WithoutPassword(std::move(text));
    });
    return DumpJson(effect);
}

}  // namespace

void SessionCheck::OnComment(const Line& line)
{
    if (line.text.compare(0, kLost.size(), kLost) != 0)
        return;
    OnEnd();
    if (!mDifference)
        mLostAt = line.number;
}

void SessionCheck::OnInput(const Line& line, const Json& /*json*/, const BoundCall& /*input*/)
{
    OnEnd();
    mInputLine = line.number;
}

void SessionCheck::OnEffect(const std::string& effect)
{
    mActual.push_back(Json::parse(effect));
}

void SessionCheck::OnExpected(const Line& line, Json& effect)
{
    if (mActual.empty()) {
        mDifference = {line.number, MaskedText(effect), kNoEffect};
        return;
    }
    LeaveOutWhatIsNotTold(effect, mActual.front());
    if (!SameEffect(effect, mActual.front()))
        mDifference = {line.number, MaskedText(effect), MaskedText(mActual.front())};
    mActual.pop_front();
}

void SessionCheck::OnEnd()
{
    if (!mActual.empty())
        mDifference = {mInputLine, kNoEffect, MaskedText(mActual.front())};
}

}  // namespace Session
