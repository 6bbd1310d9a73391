#include "protocol/generator/Observer.h"

#include "assetconnector/host/ferrite/ReservedCharacters.h"

#include <algorithm>
#include <stdexcept>

namespace Protocol::Generator {
namespace {

using ferrite::utility::UTF16to8;

/// What an element of the header says.
std::string ValueIn(const Node& root, const char* element)
{
    for (const Node& child : root.children)
        if (child.name == element)
            return child.attributes.front().second;
    return "";
}

std::string SourceOf(const Node& root, const char* element, const Sources& sources)
{
    const std::string value = ValueIn(root, element);
    const auto source = sources.find(value);
    return source == sources.end() ? value : source->second;
}

/// What says the same as the task is told from what the host named itself.
Header HeaderOf(const Node& root, const Sources& sources)
{
    Header header{SourceOf(root, "taskID", sources), SourceOf(root, "msgID", sources),
                  SourceOf(root, "browserID", sources)};
    if (header.taskID != "request" && ValueIn(root, "msgID") == ValueIn(root, "taskID"))
        header.msgID = "task";
    return header;
}

/// Samples in place of what the generator filled in, so that people see what may be there.
void PutSamples(const std::vector<Place>& places, Node& root, bool decoded)
{
    ForEachPlace(root, "", [&](const std::string& path, std::string& value) {
        for (const Place& place : places) {
            if (place.path != path || place.sample.empty())
                continue;
            const bool isFilled =
                value.find("a>b") != std::string::npos || value.find("a&gt;b") != std::string::npos;
            if (isFilled || place.form == "guid" || place.form == "integer" ||
                value == RecordingHost::kBrowserID) {
                UTF16String sample = ferrite::utility::UTF8to16(place.sample);
                if (decoded && place.form == "xml")
                    ferrite::xml::utils::DecodeReservedCharacters(UTF16String(sample), sample);
                value = UTF16to8(sample);
            }
        }
    });
}

}  // namespace

void AddUnique(std::vector<std::string>& values, const std::string& value)
{
    if (std::find(values.begin(), values.end(), value) == values.end())
        values.push_back(value);
}

Observer::Observer(Model& model) : mModel(model)
{
    for (const MessageClass& row : MessageClasses())
        mModel.stationMessages.push_back({row.name, row.typeName, "", row.payload, {}, {}});
}

void Observer::AddEffect(const Effect& effect, Sending sending, const Sources& sources)
{
    if (effect.operation == Recorder::kNotification)
        AddNotification(effect.arguments[0], effect.arguments[1], std::move(sending), sources);
    else if (effect.operation == Recorder::kPost)
        AddPost(effect.arguments[0], effect.arguments[1], sending);
}

void Observer::AddNotification(const std::string& identifier, const std::string& text, Sending sending,
                               const Sources& sources)
{
    Node root = ReadNode(text);
    sending.header = HeaderOf(root, sources);
    sending.decoded = text.find(">a>b<") != std::string::npos || text.find("<![CDATA[") != std::string::npos;
    std::set<std::string> carried;
    ForEachPlace(root, "", [&carried](const std::string& path, const std::string&) { carried.insert(path); });
    Event& event = EventOf(identifier);
    PutSamples(mModel.places, root, sending.decoded);
    if (sending.header.msgID == "task")
        root.Child("msgID").attributes = root.Child("taskID").attributes;
    if (event.example.empty())
        event.example = root.Text();
    for (Sending& known : event.sent)
        if (known.connector == sending.connector && known.callback == sending.callback &&
            known.request == sending.request) {
            known.decoded = known.decoded || sending.decoded;
            carried.insert(known.carries.begin(), known.carries.end());
            known.carries = InOrder(carried);
            if (known.when != sending.when)
                known.when.clear();
            return;
        }
    sending.carries = InOrder(carried);
    event.sent.push_back(std::move(sending));
}

void Observer::AddPost(const std::string& name, const std::string& station, const Sending& sending)
{
    for (StationMessage& message : mModel.stationMessages)
        if (message.name == name) {
            message.station = station;
            if (!sending.callback.empty())
                AddUnique(message.callbacks, sending.callback);
            else
                AddUnique(message.requests, sending.request);
        }
}

std::vector<std::string> Observer::InOrder(const std::set<std::string>& paths) const
{
    std::vector<std::string> ordered;
    for (const Place& place : mModel.places)
        if (paths.count(place.path) != 0)
            ordered.push_back(place.path);
    if (ordered.size() != paths.size())
        throw std::runtime_error("protocol/facts/PlaceFacts.cpp lacks rows for what notifications carry");
    return ordered;
}

Event& Observer::EventOf(const std::string& identifier)
{
    for (Event& event : mModel.events)
        if (event.identifier == identifier)
            return event;
    throw std::runtime_error("the catalogue does not have " + identifier);
}

}  // namespace Protocol::Generator
