#include "session/SessionCheck.h"

#include "session/NotificationText.h"

#include <string>
#include <utility>

namespace Session {
namespace {

bool SameEffect(const Json& expected, const Json& actual)
{
    if (expected == actual)
        return true;
    const auto expectedData = expected.find("data");
    const auto actualData = actual.find("data");
    return expectedData != expected.end() && actualData != actual.end() &&
           expected.at("notification") == actual.at("notification") && expectedData->is_string() &&
           SameNotificationText(expectedData->get_ref<const std::string&>(),
                                actualData->get_ref<const std::string&>());
}

}  // namespace

void SessionCheck::OnInput(const Line& line, const Json& /*json*/, const BoundCall& /*input*/)
{
    OnEnd();
    mInputLine = line.number;
}

void SessionCheck::OnEffect(const OrderedJson& effect)
{
    mActual.push_back(Json::parse(DumpJson(effect)));
}

void SessionCheck::OnExpected(const Line& line, const Json& effect)
{
    if (mActual.empty()) {
        mDifference = {line.number, effect, std::nullopt};
        return;
    }
    if (!SameEffect(effect, mActual.front()))
        mDifference = {line.number, effect, mActual.front()};
    mActual.pop_front();
}

void SessionCheck::OnEnd()
{
    if (!mActual.empty())
        mDifference = {mInputLine, std::nullopt, std::move(mActual.front())};
}

}  // namespace Session
