#include "protocol/ClientModel.h"

#include "protocol/MemberPaths.h"

#include <string_view>
#include <vector>

namespace Protocol {
namespace {

using Keys = std::vector<const char*>;

/// \return The object with these keys alone, as far as it has them.
Json Picked(const Json& object, const Keys& keys)
{
    Json picked = Json::object();
    for (const char* const key : keys)
        if (object.contains(key))
            picked[key] = object[key];
    return picked;
}

Json PickedFromEach(const Json& array, const Keys& keys)
{
    Json picked = Json::array();
    for (const Json& entry : array)
        picked.push_back(Picked(entry, keys));
    return picked;
}

/// Samples tell the keys of nested maps apart: those in Place::missing are theirs.
bool IsKeyOfMap(const Model& model, const Place& place)
{
    const Member* const member = FindMember(model, place.member).member;
    return member != nullptr && place.form == "guid" && member->type.compare(0, 4, "map:") == 0;
}

Json Places(const Model& model, const Json& json)
{
    Json places = PickedFromEach(json, {"path", "form", "read", "written", "many", "most", "member", "also",
                                        "sameAs", "countsAt", "hiddenBy", "missing"});
    for (std::size_t i = 0; i < places.size(); ++i)
        if (IsKeyOfMap(model, model.places[i]))
            places[i]["sample"] = model.places[i].sample;
    return places;
}

Json Events(const Json& json)
{
    Json events = PickedFromEach(
        json, {"identifier", "kind", "answers", "progress", "ends", "cancel", "handling", "sent"});
    for (Json& event : events) {
        if (event.contains("handling"))
            event["handling"] =
                PickedFromEach(event["handling"], {"connector", "handled", "needs", "answer"});
        if (event.contains("sent"))
            event["sent"] =
                PickedFromEach(event["sent"], {"connector", "callback", "request", "decoded", "header"});
    }
    return events;
}

/// \return A member of the module, with a line for each entry, so that differences can be read.
std::string Lines(std::string_view name, const Json& array)
{
    std::string text = "    " + std::string(name) + ": [\n";
    for (const Json& entry : array)
        text += "        " + entry.dump() + ",\n";
    return text + "    ],\n";
}

}  // namespace

std::string ClientModel(const Model& model)
{
    const Json json = ToJson(model);
    std::string text =
        "// What the client knows of the protocol. Made from the library by the build: do not edit.\n"
        "export default {\n";
    for (const char* const name : {"version", "requestRoot", "notificationRoot"})
        text += "    " + std::string(name) + ": " + json[name].dump() + ",\n";
    text += Lines("forms", PickedFromEach(json["forms"], {"name", "words", "values"}));
    text += Lines("records", json["records"]);
    text += Lines("places", Places(model, json["places"]));
    text += Lines("events", Events(json["events"]));
    return text + "};\n";
}

}  // namespace Protocol
