#include "desk/Overview.h"

#include "protocol/Model.h"
#include "session/Operations.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace Desk {
namespace {

using Session::Json;

constexpr std::size_t kMostTasks = 1000;    ///< The oldest goes.
constexpr std::size_t kMostAssets = 20000;  ///< Of each kind.
constexpr std::size_t kMostAssetBytes = std::size_t{32} << 20;
constexpr std::size_t kMostColumns = 1000;  ///< The newest stay out.

/// \return What stands behind the first such start, up to the end; empty without one.
std::string Between(std::string_view xml, std::string_view start, char end)
{
    const std::size_t found = xml.find(start);
    if (found == std::string_view::npos)
        return {};
    const std::size_t begin = found + start.size();
    return std::string(xml.substr(begin, xml.find(end, begin) - begin));
}

bool Contains(const std::vector<std::string>& texts, const std::string& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// \return The request, where the host tells its end: what a connector answers at once is no task.
const Protocol::Event* FindTaskRequest(const std::string& identifier)
{
    const Protocol::Event* const event = Protocol::FindEvent(Protocol::ThisModel(), identifier);
    if (event == nullptr || event->answers.empty())
        return nullptr;
    const bool isTold =
        std::any_of(event->handling.begin(), event->handling.end(), [](const Protocol::Handling& handling) {
            return handling.handled &&
                   (handling.answer.sender == "callback" || handling.answer.sender == "host");
        });
    return isTold ? event : nullptr;
}

const Json& ArgumentOf(const Json& line, std::size_t at)
{
    static const Json kNone;
    const auto args = line.find("args");
    return args != line.end() && args->is_array() && at < args->size() ? (*args)[at] : kNone;
}

std::string TextOf(const Json& value)
{
    return value.is_string() ? value.get<std::string>() : std::string();
}

std::string FilePart(const std::string& path)
{
    return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace

void Overview::Take(const Json& line, const std::string& by, const std::string& request)
{
    if (line.contains("dispatcher"))
        TakeDispatcherCall(line, by, request);
    else if (line.contains("callback"))
        TakeCallback(line);
    else if (line.contains("notification"))
        TakeNotification(line);
    else if (line.contains("post"))
        TakePost(line);
    else if (TextOf(line.value("hostCall", Json())) == "Ridge::SRProject::RegisterAssetMediaInfoList") {
        TakeAssets("items", ArgumentOf(line, 0));
        TakeAssets("media infos", ArgumentOf(line, 1));
    }
}

void Overview::TakeDispatcherCall(const Json& line, const std::string& by, const std::string& request)
{
    const std::string operation = TextOf(line["dispatcher"]);
    if (operation == "RefuseExit") {
        mRefusedBy = by.empty() ? "a panel" : by;
        return;
    }
    const Protocol::Event* const event = FindTaskRequest(request);
    if (event == nullptr)
        return;
    const std::string message = TextOf(ArgumentOf(line, 1));
    if (FindTask("msgID", message) == nullptr)
        Begin({{"taskID", ArgumentOf(line, 0)},
               {"msgID", message},
               {"what", Protocol::ShortName(event->identifier)},
               {"request", event->identifier},
               {"operation", operation},
               {"by", by}});
}

void Overview::TakeCallback(const Json& line)
{
    const std::string name = TextOf(line["callback"]);
    const std::string task = TextOf(ArgumentOf(line, 0));
    if (name == "OnIngestStarted" && FindTask("taskID", task) == nullptr)
        Begin({{"taskID", task}, {"msgID", nullptr}, {"what", "Ingest"}, {"operation", name}, {"by", ""}});
    else if (name == "OnIngestFinished" || name == "OnIngestCancelled")
        End("taskID", task);
    else if (name == "OnIngestPaused" || name == "OnIngestResumed")
        for (const Json& each : ArgumentOf(line, 0))
            if (Json* const running = FindTask("taskID", TextOf(each)))
                (*running)["isPaused"] = name == "OnIngestPaused";
    if (name == "OnReadXMPFinished" && ArgumentOf(line, 2).is_number() && ArgumentOf(line, 2) >= 0) {
        const std::string path = TextOf(ArgumentOf(line, 3));
        Json info = {{"assetMediaType", 1},
                     {"mediaPath", path},
                     {"assetMediaInfoGUID", ArgumentOf(line, 4)},
                     {"xmpString", ArgumentOf(line, 6)},
                     {"createTime", ArgumentOf(line, 7)},
                     {"lastModifyTime", ArgumentOf(line, 8)}};
        if (!mInfos.Has(path))
            info["aliasName"] = FilePart(path);
        TakeAssets("media info", info);
    }
    if (name == "OnIngestItemsReady")
        for (const Json& item : ArgumentOf(line, 3))
            if (item.is_object())
                TakeAssets("media info", {{"assetMediaType", 1},
                                          {"mediaPath", item.value("filePath", Json(""))},
                                          {"aliasName", item.value("aliasName", Json(""))}});
    if (const Session::CallbackOperation* const callback = Session::FindCallback(name))
        for (std::size_t i = 0; i < callback->labels.count; ++i)
            TakeAssets(std::string(callback->labels.texts[i]), ArgumentOf(line, i));
}

void Overview::TakeNotification(const Json& line)
{
    const std::string identifier = TextOf(line["notification"]);
    const std::string xml = TextOf(line.value("data", Json()));
    const std::string message = Between(xml, "<msgID ID=\"", '"');
    Json* const task = FindTask("msgID", message);
    const Protocol::Event* const event =
        task == nullptr ? nullptr : FindTaskRequest(TextOf(task->value("request", Json())));
    if (event == nullptr)
        return;
    if (Contains(event->ends.empty() ? event->answers : event->ends, identifier))
        End("msgID", message);
    else if (Contains(event->progress, identifier))
        (*task)["percentage"] = std::atoi(Between(xml, "<percentage>", '<').c_str());
}

void Overview::TakePost(const Json& line)
{
    const std::string name = TextOf(line["post"]);
    const Json payload = line.value("payload", Json());
    const auto remove = [this](const std::set<Json>& ids) {
        mColumns.erase(std::remove_if(mColumns.begin(), mColumns.end(),
                                      [&ids](const Json& column) { return ids.count(column.at("id")) != 0; }),
                       mColumns.end());
    };
    if (name == "Ridge::InsertDynamicColumnsMessage" && payload.is_array() && !payload.empty()) {
        std::set<Json> ids;
        for (const Json& column : payload[0])
            ids.insert(column.at(0));
        remove(ids);
        for (const Json& column : payload[0])
            if (mColumns.size() < kMostColumns && ids.erase(column.at(0)) != 0)
                mColumns.push_back({{"id", column.at(0)}, {"name", column.at(1)}});
    } else if (name == "Ridge::DeleteDynamicColumnsMessage") {
        remove({payload.begin(), payload.end()});
    }
}

void Overview::TakeAssets(const std::string& label, const Json& value)
{
    Known* const known = label == "media infos" || label == "media info" ? &mInfos
                         : label == "items" || label == "item"           ? &mItems
                                                                         : nullptr;
    if (known == nullptr)
        return;
    const char* const key = known == &mInfos ? "mediaPath" : "assetGUID";
    if (value.is_array())
        for (const Json& each : value)
            known->Add(key, each);
    else
        known->Add(key, value);
}

Json Overview::State() const
{
    Json tasks = Json::array();
    for (Json task : mTasks) {
        task.erase("request");
        tasks.push_back(std::move(task));
    }
    return {{"tasks", std::move(tasks)}, {"columns", mColumns}};
}

Json Overview::Assets() const
{
    return {{"assetMediaInfoList", mInfos.All()}, {"assetItemList", mItems.All()}};
}

void Overview::Begin(Json task)
{
    task["percentage"] = nullptr;
    task["isPaused"] = false;
    mTasks.push_back(std::move(task));
    if (mTasks.size() > kMostTasks)
        mTasks.pop_front();
}

void Overview::End(const char* member, const std::string& id)
{
    const Json wanted = id;
    mTasks.erase(std::remove_if(mTasks.begin(), mTasks.end(),
                                [&](const Json& task) { return task[member] == wanted; }),
                 mTasks.end());
}

Json* Overview::FindTask(const char* member, const std::string& id)
{
    const Json wanted = id;
    const auto found =
        std::find_if(mTasks.begin(), mTasks.end(), [&](const Json& task) { return task[member] == wanted; });
    return found == mTasks.end() ? nullptr : &*found;
}

void Overview::Known::Add(const char* key, const Json& value)
{
    const std::string id = value.is_object() ? TextOf(value.value(key, Json())) : std::string();
    if (id.empty())
        return;
    const auto place = mPlaces.find(id);
    Json added = place == mPlaces.end() ? Json::object() : mValues[place->second];
    const std::size_t before = added.empty() ? 0 : Session::DumpJson(added).size();
    added.update(value);
    const std::size_t bytes = mBytes - before + Session::DumpJson(added).size();
    if (bytes > kMostAssetBytes || (place == mPlaces.end() && mValues.size() >= kMostAssets))
        return;
    mBytes = bytes;
    if (place != mPlaces.end()) {
        mValues[place->second] = std::move(added);
    } else {
        mPlaces.emplace(id, mValues.size());
        mValues.push_back(std::move(added));
    }
}

}  // namespace Desk
