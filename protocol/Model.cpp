#include "protocol/Model.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>
#include <type_traits>

namespace Protocol {
namespace {

/// The fields of each part of a model, once for both directions: tuples of a key and a member.
template <class Part>
struct Fields;

template <class Part, class Value>
constexpr std::pair<const char*, Value Part::*> Field(const char* key, Value Part::*member)
{
    return {key, member};
}

template <>
struct Fields<Form>
{
    static constexpr auto kRows = std::make_tuple(
        Field("name", &Form::name), Field("about", &Form::about), Field("words", &Form::words),
        Field("values", &Form::values), Field("anyCase", &Form::anyCase), Field("pattern", &Form::pattern),
        Field("writtenPattern", &Form::writtenPattern), Field("malformedSample", &Form::malformedSample));
};

template <>
struct Fields<Place>
{
    static constexpr auto kRows = std::make_tuple(
        Field("path", &Place::path), Field("form", &Place::form), Field("read", &Place::read),
        Field("written", &Place::written), Field("many", &Place::many), Field("most", &Place::most),
        Field("member", &Place::member), Field("also", &Place::also), Field("needs", &Place::needs),
        Field("sameAs", &Place::sameAs), Field("countsAt", &Place::countsAt),
        Field("hiddenBy", &Place::hiddenBy), Field("writtenWith", &Place::writtenWith),
        Field("missing", &Place::missing), Field("empty", &Place::empty),
        Field("malformed", &Place::malformed), Field("sample", &Place::sample),
        Field("about", &Place::about));
};

template <>
struct Fields<Action>
{
    static constexpr auto kRows = std::make_tuple(Field("kind", &Action::kind), Field("name", &Action::name),
                                                  Field("station", &Action::station));
};

template <>
struct Fields<Answer>
{
    static constexpr auto kRows =
        std::make_tuple(Field("sender", &Answer::sender), Field("notifications", &Answer::notifications),
                        Field("callbacks", &Answer::callbacks), Field("matchedBy", &Answer::matchedBy),
                        Field("browserID", &Answer::browserID));
};

template <>
struct Fields<Handling>
{
    static constexpr auto kRows =
        std::make_tuple(Field("connector", &Handling::connector), Field("handled", &Handling::handled),
                        Field("does", &Handling::does), Field("reads", &Handling::reads),
                        Field("needs", &Handling::needs), Field("answer", &Handling::answer));
};

template <>
struct Fields<Header>
{
    static constexpr auto kRows =
        std::make_tuple(Field("taskID", &Header::taskID), Field("msgID", &Header::msgID),
                        Field("browserID", &Header::browserID));
};

template <>
struct Fields<Sending>
{
    static constexpr auto kRows =
        std::make_tuple(Field("connector", &Sending::connector), Field("callback", &Sending::callback),
                        Field("request", &Sending::request), Field("when", &Sending::when),
                        Field("decoded", &Sending::decoded), Field("header", &Sending::header),
                        Field("carries", &Sending::carries));
};

template <>
struct Fields<Event>
{
    static constexpr auto kRows = std::make_tuple(
        Field("constant", &Event::constant), Field("identifier", &Event::identifier),
        Field("kind", &Event::kind), Field("family", &Event::family), Field("since", &Event::since),
        Field("about", &Event::about), Field("answers", &Event::answers), Field("progress", &Event::progress),
        Field("ends", &Event::ends), Field("cancel", &Event::cancel), Field("handling", &Event::handling),
        Field("sent", &Event::sent), Field("example", &Event::example));
};

template <>
struct Fields<StationMessage>
{
    static constexpr auto kRows = std::make_tuple(
        Field("name", &StationMessage::name), Field("typeName", &StationMessage::typeName),
        Field("station", &StationMessage::station), Field("payload", &StationMessage::payload),
        Field("callbacks", &StationMessage::callbacks), Field("requests", &StationMessage::requests));
};

template <>
struct Fields<Member>
{
    static constexpr auto kRows = std::make_tuple(Field("name", &Member::name), Field("type", &Member::type));
};

template <>
struct Fields<Record>
{
    static constexpr auto kRows =
        std::make_tuple(Field("name", &Record::name), Field("members", &Record::members));
};

template <>
struct Fields<Model>
{
    static constexpr auto kRows = std::make_tuple(
        Field("version", &Model::version), Field("requestRoot", &Model::requestRoot),
        Field("notificationRoot", &Model::notificationRoot), Field("connectors", &Model::connectors),
        Field("forms", &Model::forms), Field("places", &Model::places), Field("events", &Model::events),
        Field("stationMessages", &Model::stationMessages), Field("records", &Model::records));
};

template <class Part, class Visit>
void ForEachField(Visit visit)
{
    std::apply([&visit](const auto&... row) { (visit(row.first, row.second), ...); }, Fields<Part>::kRows);
}

template <class Value>
struct IsVector : std::false_type
{
};
template <class Value>
struct IsVector<std::vector<Value>> : std::true_type
{
};

/// Fields at their construction values are left out.
template <class Value>
Json Write(const Value& value)
{
    if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
        return value;
    } else if constexpr (IsVector<Value>::value) {
        Json array = Json::array();
        for (const auto& entry : value)
            array.push_back(Write(entry));
        return array;
    } else {
        static const Value kConstructed{};
        Json object = Json::object();
        ForEachField<Value>([&](const char* key, auto member) {
            if constexpr (std::is_same_v<decltype(member), std::optional<Json> Value::*>) {
                if (value.*member)
                    object[key] = *(value.*member);
            } else {
                Json field = Write(value.*member);
                if (field != Write(kConstructed.*member))
                    object[key] = std::move(field);
            }
        });
        return object;
    }
}

/// Where in the JSON something is read, for errors.
[[noreturn]] void Fail(const std::string& where, const char* what)
{
    throw std::runtime_error("not a protocol model: " + where + ' ' + what);
}

template <class Part>
void Read(const Json& json, const std::string& where, Part& part);

void Read(const Json& json, const std::string& where, std::string& text)
{
    if (!json.is_string())
        Fail(where, "is not a string");
    text = json.get<std::string>();
}

void Read(const Json& json, const std::string& where, bool& flag)
{
    if (!json.is_boolean())
        Fail(where, "is not a boolean");
    flag = json.get<bool>();
}

void Read(const Json& json, const std::string& where, int& number)
{
    if (!json.is_number_integer())
        Fail(where, "is not an integer");
    number = json.get<int>();
}

void Read(const Json& json, const std::string& /*where*/, std::optional<Json>& value)
{
    value = json;
}

template <class Value>
void Read(const Json& json, const std::string& where, std::vector<Value>& values)
{
    if (!json.is_array())
        Fail(where, "is not an array");
    values.reserve(json.size());
    for (const Json& entry : json) {
        const std::string place = where + '[' + std::to_string(values.size()) + ']';
        Read(entry, place, values.emplace_back());
    }
}

template <class Part>
void Read(const Json& json, const std::string& where, Part& part)
{
    if (!json.is_object())
        Fail(where, "is not an object");
    ForEachField<Part>([&](const char* key, auto member) {
        const auto found = json.find(key);
        if (found != json.end())
            Read(*found, where.empty() ? key : where + '.' + key, part.*member);
    });
}

template <class Rows, class Value>
auto* FindIn(const Rows& rows, std::string Rows::value_type::*key, const Value& value)
{
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.*key == value; });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace

Json ToJson(const Model& model)
{
    return Write(model);
}

Model ParseModel(const std::string& text)
{
    Json json;
    try {
        json = Json::parse(text);
    } catch (const Json::exception& exception) {
        const std::string reason = exception.what();  // begins with the JSON library's own name for it
        throw std::runtime_error("not a protocol model: " + reason.substr(reason.find("] ") + 2));
    }
    Model model;
    Read(json, "the model", model);
    if (model.version.empty() || model.events.empty() || model.places.empty())
        Fail("it", "has no version, no events or no places");
    return model;
}

const Form* FindForm(const Model& model, std::string_view name)
{
    return FindIn(model.forms, &Form::name, name);
}

const Place* FindPlace(const Model& model, std::string_view path)
{
    return FindIn(model.places, &Place::path, path);
}

const Event* FindEvent(const Model& model, std::string_view identifier)
{
    return FindIn(model.events, &Event::identifier, identifier);
}

const Record* FindRecord(const Model& model, std::string_view name)
{
    return FindIn(model.records, &Record::name, name);
}

std::string_view ParentOf(std::string_view path)
{
    const std::string_view element = path.substr(0, path.find('@'));
    const std::size_t slash = element.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : element.substr(0, slash);
}

std::string_view ElementOf(std::string_view path)
{
    const std::string_view element = path.substr(0, path.find('@'));
    return element.substr(element.rfind('/') + 1);
}

std::string_view AttributeOf(std::string_view path)
{
    const std::size_t at = path.find('@');
    return at == std::string_view::npos ? std::string_view() : path.substr(at + 1);
}

std::string_view ShortName(std::string_view identifier)
{
    return identifier.substr(identifier.rfind('.') + 1);
}

}  // namespace Protocol
