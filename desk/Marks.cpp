#include "desk/Marks.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Desk::Marks {
namespace {

void PutObject(Recording::Recorder& recorder, const nlohmann::json& object)
{
    recorder.Note(kPrefix + object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

void Put(Recording::Recorder& recorder, const char* member, const std::string& mark)
{
    PutObject(recorder, {{member, mark}});
}

Raising::Raising(Recording::Recorder& recorder, const Origin& asker, const std::string& type,
                 const std::vector<std::string>& handles)
    : mRecorder(recorder), mType(type)
{
    const bool isAnswered = std::find(handles.begin(), handles.end(), type) != handles.end();
    PutObject(mRecorder, {{"raises", mType}, {"by", asker.browserID}, {"answered", isAnswered}});
}

Raising::~Raising()
{
    try {
        PutObject(mRecorder, {{"raised", mType}});
    } catch (...) {  // no memory: the recording lacks it
    }
}

}  // namespace Desk::Marks
