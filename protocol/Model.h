#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What panels and host may say to each other, as data: made from the library when it is built, and the same
/// as JSON for tools in any language. Everything else that is known of the protocol here (the reference, the
/// schemas, the types, the checker, the comparison) is made from it.
///
/// A model is plain data: any number of threads may read one.
namespace Protocol {

using Json = nlohmann::ordered_json;

/// How a value is spelled.
struct Form
{
    std::string name;                ///< Such as "time".
    std::string about;               ///< How it is written, for people.
    std::vector<std::string> words;  ///< The only ones that say something; empty: there is no such list.
    std::vector<int> values;         ///< What each word is in a record, where that is a number.
    bool anyCase = false;            ///< Of the words.
    std::string pattern;             ///< What a request should look like, as a regular expression of XML
                                     ///< schemas; empty: anything.
    std::string writtenPattern;      ///< What a notification holds, likewise.
    std::string malformedSample;     ///< A text that is none; empty: there is no such text.
};

/// A place in a text: an element below the root, or an attribute of one. Most places carry a value.
struct Place
{
    std::string path;      ///< Such as "fileList/filePath@path": elements, then the attribute.
    std::string form;      ///< The name of a Form; "block", "list", "item" or "properties" of what holds
                           ///< elements, "empty" of what holds attributes alone.
    bool read = false;     ///< In requests.
    bool written = false;  ///< In notifications.
    bool many = false;     ///< It may stand any number of times; else the first one counts.
    int most = 1;          ///< How often a notification holds it at most, where it does not stand many times.
    std::string member;    ///< Of the record, with those around it: "fileList"; empty: none of its own.
    std::vector<std::string> also;   ///< Members that change with it where their elements are there, too.
    std::vector<std::string> needs;  ///< Places of the same item without which it says nothing to the host.
    std::string sameAs;              ///< Of a list within an item of its kind: the list that it is like.
    std::string countsAt;            ///< Of a time: the place beside it whose rate it counts at.
    std::vector<std::string> hiddenBy;  ///< Places that the host takes in its stead where they have a value.
    std::vector<std::string> writtenWith;  ///< Places one of which must have a value, or it is not written.
    std::optional<Json> missing;           ///< What the member is without it, in the JSON of records.
    std::optional<Json> empty;             ///< ... with nothing in it.
    std::optional<Json> malformed;         ///< ... with the malformed sample of its form.
    std::string sample;                    ///< A value as it may be; what holds elements has none.
    std::string about;                     ///< What it says, for people.
};

/// What a request makes a connector do.
struct Action
{
    std::string kind;     ///< "dispatcher", "reply", "post", or "host" for the registration of assets.
    std::string name;     ///< The operation, the notification's identifier or the message's class.
    std::string station;  ///< Where a message goes.
};

/// How the answer to a request comes, at one connector.
struct Answer
{
    std::string sender;                      ///< "connector": at once; "callback": when the host reports;
                                             ///< "other": another connector; "host": not this library;
                                             ///< "nobody": by design.
    std::vector<std::string> notifications;  ///< One of these identifiers.
    std::vector<std::string> callbacks;      ///< The reports that send it.
    std::vector<std::string> matchedBy;      ///< Header elements that say the same as the request's.
    std::string browserID;                   ///< See Header.
};

/// What one connector does with a request.
struct Handling
{
    std::string connector;
    bool handled = false;
    std::vector<Action> does;        ///< With all it reads.
    std::vector<std::string> reads;  ///< Places that make a difference.
    std::vector<std::string> needs;  ///< Places without any of which it does nothing.
    Answer answer;
};

/// Where the header of a notification comes from. "call": the report of the host names it; "request": the
/// request; "task": the task; "fresh": made for it; "current": the panel that the host names at that moment;
/// any other text stands so.
struct Header
{
    std::string taskID;
    std::string msgID;
    std::string browserID;
};

/// One way in which a connector comes to send a notification.
struct Sending
{
    std::string connector;
    std::string callback;  ///< The report of the host; empty when a request is the cause.
    std::string request;   ///< Its identifier.
    std::string when;      ///< For people, where it is not always sent.
    bool decoded = false;  ///< With one layer of reserved characters decoded.
    Header header;
    std::vector<std::string> carries;  ///< Places that it can hold.
};

struct Event
{
    std::string constant;    ///< Such as "kPlexaEventType_ImportXMP".
    std::string identifier;  ///< What crosses the wire.
    std::string kind;        ///< "request" or "notification".
    std::string family;
    std::string since;  ///< A version.
    std::string about;

    // Of requests.
    std::vector<std::string> answers;   ///< Notifications, any of which answers it.
    std::vector<std::string> progress;  ///< Notifications that come on the way.
    std::vector<std::string> ends;      ///< Those of them that end the work; empty: the answer does.
    std::string cancel;                 ///< The request that ends the work.
    std::vector<Handling> handling;     ///< One for each connector.

    // Of notifications.
    std::vector<Sending> sent;  ///< Empty: this library never sends it.

    std::string example;  ///< A text.
};

/// A typed message for host components.
struct StationMessage
{
    std::string name;      ///< The class.
    std::string typeName;  ///< Whose hash tells it apart.
    std::string station;
    std::string payload;                 ///< A type, as in Member.
    std::vector<std::string> callbacks;  ///< The reports of the host that post it.
    std::vector<std::string> requests;   ///< The identifiers of requests that post it.
};

struct Member
{
    std::string name;
    std::string type;  ///< "string", "boolean", "integer", "guid", "time", "rate", "object", "record:NAME",
                       ///< "list:TYPE", "nullable:TYPE" or "map:KEY:TYPE" (an array of pairs).
};

struct Record
{
    std::string name;
    std::vector<Member> members;
};

struct Model
{
    std::string version;
    std::string requestRoot;
    std::string notificationRoot;
    std::vector<std::string> connectors;
    std::vector<Form> forms;
    std::vector<Place> places;  ///< Depth first, in the order in which notifications hold them.
    std::vector<Event> events;  ///< In the order of the catalogue, requests first.
    std::vector<StationMessage> stationMessages;
    std::vector<Record> records;  ///< "Message" is what texts are decoded to.
};

/// \return The protocol of this library. Any thread.
const Model& ThisModel();

/// \return Its text, indented, with a line feed behind it. Any thread.
const std::string& ThisModelText();

/// \return The model as JSON, whose schema is protocol.schema.json.
Json ToJson(const Model& model);

/// \return The model that the JSON text holds. Members that this version does not know are left out.
/// \throws std::runtime_error with one line that says what is wrong.
Model ParseModel(const std::string& text);

/// Each finds by its name; null when there is none.
const Form* FindForm(const Model& model, std::string_view name);
const Place* FindPlace(const Model& model, std::string_view path);
const Event* FindEvent(const Model& model, std::string_view identifier);
const Record* FindRecord(const Model& model, std::string_view name);

/// The parts of a path. \return The path of the element around it, empty for a child of the root.
std::string_view ParentOf(std::string_view path);

/// \return The name of the element that a path ends with, or whose attribute it names.
std::string_view ElementOf(std::string_view path);

/// \return The name of the attribute, empty for a place that is an element.
std::string_view AttributeOf(std::string_view path);

/// \return "TransferRequest" of "com.velmo.browser.event.TransferRequest".
std::string_view ShortName(std::string_view identifier);

/// The words of Place::form for what holds no value of its own.
constexpr std::string_view kBlock = "block";            ///< Elements, each once.
constexpr std::string_view kList = "list";              ///< Items.
constexpr std::string_view kItem = "item";              ///< An item of a list.
constexpr std::string_view kProperties = "properties";  ///< An item with elements of any name.
constexpr std::string_view kEmpty = "empty";            ///< Attributes alone.

}  // namespace Protocol
