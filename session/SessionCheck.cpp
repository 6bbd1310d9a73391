#include "session/SessionCheck.h"

#include "session/NotificationText.h"

#include <string>
#include <utility>
#include <vector>

namespace Session {
namespace {

constexpr const char* kNoEffect = "no effect";

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
    std::vector<std::pair<std::string, Json*>> pending{{"", &effect}};
    while (!pending.empty()) {
        const auto [name, json] = std::move(pending.back());
        pending.pop_back();
        const bool isEmpty = json->is_string() && json->get_ref<const std::string&>().empty();
        if (name == "ftpPassword" && !isEmpty && *json != "***") {
            *json = "(a password, not masked)";
        } else if (json->is_string()) {
            *json = WithoutPassword(json->get<std::string>());
        } else if (json->is_structured()) {
            for (auto& [key, value] : json->items())
                pending.emplace_back(key, &value);
        }
    }
    return DumpJson(effect);
}

}  // namespace

void SessionCheck::OnInput(const Line& line, const Json& /*json*/, const BoundCall& /*input*/)
{
    OnEnd();
    mInputLine = line.number;
}

void SessionCheck::OnEffect(OrderedJson& effect)
{
    mActual.push_back(Json::parse(DumpJson(effect)));
}

void SessionCheck::OnExpected(const Line& line, Json& effect)
{
    if (mActual.empty()) {
        mDifference = {line.number, MaskedText(effect), kNoEffect};
        return;
    }
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
