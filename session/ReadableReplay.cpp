#include "session/ReadableReplay.h"

#include "session/NotificationText.h"
#include "session/SimulatedObjects.h"
#include "session/format/ConnectorKinds.h"
#include "session/format/FormatError.h"
#include "session/format/Rows.h"

#include <algorithm>
#include <utility>

namespace Session {
namespace {

/// How many requests are printed of those that are registered, or withdrawn, in a row.
constexpr std::size_t kShownOfRun = 3;

bool IsRegistration(const std::string& hostCall)
{
    return hostCall.find("TandemEventListener") != std::string::npos;
}

/// Who acts when the host calls an exported function.
constexpr const char* kLibrary = "connector library";

std::string TitleOf(const std::string& connector)
{
    for (const ConnectorKind& kind : kConnectorKinds)
        if (kind.name == connector)
            return std::string(kind.title);
    return connector;
}

/// \return The last part of a dotted identifier.
std::string ShortName(const std::string& identifier)
{
    return identifier.substr(identifier.rfind('.') + 1);
}

/// \return The member as a string; empty when there is none.
template <class AnyJson>
std::string TextOf(const AnyJson& object, const char* member)
{
    return object.contains(member) && object[member].is_string() ? object[member].template get<std::string>()
                                                                 : std::string();
}

/// \throws FormatError when there is no row.
template <class Row>
const Row& Require(const Row* row, const std::string& complaint)
{
    if (row == nullptr)
        throw FormatError(complaint);
    return *row;
}

const ValueWriter kReadable = SimulatedObjects::WriterFor(Style::kReadable);

}  // namespace

void ReadableReplay::OnComment(const Line& line)
{
    EndInput();
    if (!std::exchange(mAfterComment, true))
        mOutline.EndLine();
    const std::size_t begin = std::min(line.text.find_first_not_of("# \t\r"), line.text.size());
    const std::size_t end = line.text.find_last_not_of(" \t\r") + 1;
    mOutline.Put(Colour::kBold, line.text.substr(begin, end - std::min(begin, end))).EndLine();
}

const ReadableReplay::InputRow ReadableReplay::kInputs[] = {
    {"create", &ReadableReplay::ShowCreate},     {"release", &ReadableReplay::ShowRelease},
    {"register", &ReadableReplay::ShowRegister}, {"panel", &ReadableReplay::ShowPanel},
    {"station", &ReadableReplay::ShowStation},   {"callback", &ReadableReplay::ShowCallback},
    {"host", &ReadableReplay::ShowHost},         {"ui", &ReadableReplay::ShowUI},
    {"call", &ReadableReplay::ShowCall},
};

const ReadableReplay::EffectRow ReadableReplay::kEffects[] = {
    {"dispatcher", &ReadableReplay::ShowDispatcher},
    {"notification", &ReadableReplay::ShowNotification},
    {"post", &ReadableReplay::ShowPost},
    {"deliver", &ReadableReplay::ShowDeliver},
    {"hostCall", &ReadableReplay::ShowHostCall},
    {"destroyed", &ReadableReplay::ShowDestroyed},
    {"exception", &ReadableReplay::ShowException},
};

void ReadableReplay::OnInput(const Line& /*line*/, const Json& json, const BoundCall& input)
{
    EndInput();
    mAfterComment = false;
    mOutline.EndLine();
    mIndent = kInputIndent;
    mSilence = mQuiet ? "nothing is shown" : "nothing happens";
    mCreating.clear();
    mSpeaker = Connectors();
    const InputRow& row =
        Require(FindRow(kInputs, [&json](const InputRow& each) { return json.contains(each.key); }),
                "this input has no form for people");
    (this->*row.show)(json, input);
    mIndent = kEffectIndent;
}

void ReadableReplay::OnEffect(const std::string& text)
{
    OrderedJson effect = OrderedJson::parse(text);
    mSilence.clear();
    if (ExtendsRun(TextOf(effect, "hostCall")))
        return;
    const std::string& kind = effect.begin().key();
    const EffectRow& row =
        Require(FindRow(kEffects, [&kind](const EffectRow& each) { return each.key == kind; }),
                "this effect has no form for people: " + kind);
    (this->*row.show)(effect.front().get<std::string>(), effect);
}

void ReadableReplay::ShowCreate(const Json& json, const BoundCall& /*input*/)
{
    mCreating = TextOf(json, "create");
    mSpeaker = TitleOf(mCreating);
    mAlive.insert(mCreating);
    Sentence(Colour::kBlue, "host creates the " + mSpeaker);
}

void ReadableReplay::ShowRelease(const Json& json, const BoundCall& /*input*/)
{
    Sentence(Colour::kBlue, "host drops the " + TitleOf(TextOf(json, "release")));
}

void ReadableReplay::ShowRegister(const Json& json, const BoundCall& /*input*/)
{
    mSpeaker = kLibrary;
    Sentence(Colour::kBlue, json["register"] ? "host asks for the panels' requests"
                                             : "host no longer wants the panels' requests");
}

void ReadableReplay::ShowPanel(const Json& json, const BoundCall& /*input*/)
{
    Heading(Colour::kCyan, "panel", mSpeaker, ShortName(TextOf(json, "panel")));
    mOutline.PutLines(mIndent, Colour::kNone, IndentedXML(json["data"]));
    mSilence += ": the request is not registered, or no connector acts on it";
}

void ReadableReplay::ShowStation(const Json& json, const BoundCall& /*input*/)
{
    Heading(Colour::kCyan, "host", "station " + TextOf(json, "station"), TextOf(json, "message"));
    if (json.contains("data")) {
        mOutline.PutLines(mIndent, Colour::kCyan, ShortName(TextOf(json, "type")));
        mOutline.PutLines(mIndent, Colour::kNone, IndentedXML(json["data"]));
    }
}

void ReadableReplay::ShowCallback(const Json& json, const BoundCall& input)
{
    const std::string name = TextOf(json, "callback");
    mSpeaker = TitleOf(TextOf(json, "to"));
    Heading(Colour::kGreen, "ingest library", mSpeaker, name);
    Arguments(name, FindCallback(name), OrderedJson::parse(input.arguments(kReadable)));
}

void ReadableReplay::ShowHost(const Json& json, const BoundCall& /*input*/)
{
    mSilence.clear();
    const Json& host = json["host"];
    if (const auto quiet = host.find("quiet"); quiet != host.end())
        mQuiet = !quiet->empty();
    Sentence(Colour::kBlue, "host from here on");
    mOutline.PutValue(mIndent, OrderedJson::parse(DumpJson(host)));
}

void ReadableReplay::ShowUI(const Json& /*json*/, const BoundCall& /*input*/)
{
    Sentence(Colour::kBlue, "user-interface thread delivers what was posted");
}

void ReadableReplay::ShowCall(const Json& json, const BoundCall& input)
{
    const std::string name = TextOf(json, "call");
    mSpeaker = kLibrary;
    Heading(Colour::kBlue, "host", mSpeaker, name);
    Arguments(name, FindExportedFunction(name), OrderedJson::parse(input.arguments(kReadable)));
}

void ReadableReplay::ShowDispatcher(const std::string& operation, OrderedJson& effect)
{
    Heading(Colour::kYellow, mSpeaker, "dispatcher", operation);
    Arguments(operation, FindDispatcherOperation(operation), std::move(effect["args"]));
}

void ReadableReplay::ShowNotification(const std::string& identifier, OrderedJson& effect)
{
    Heading(Colour::kMagenta, mSpeaker, "panel", ShortName(identifier));
    mOutline.PutLines(mIndent, Colour::kNone, IndentedXML(effect["data"]));
}

void ReadableReplay::ShowPost(const std::string& message, OrderedJson& effect)
{
    Heading(Colour::kCyan, mSpeaker + " posts", "station " + TextOf(effect, "station"),
            message + (effect["flag"] ? ", flagged" : ""));
    mOutline.PutValue(mIndent, effect["payload"]);
}

void ReadableReplay::ShowDeliver(const std::string& message, OrderedJson& effect)
{
    Heading(Colour::kCyan, "user-interface thread", "station " + TextOf(effect, "station"),
            message + ", as posted");
}

void ReadableReplay::ShowHostCall(const std::string& operation, OrderedJson& effect)
{
    Heading(Colour::kBlue, mSpeaker, "host", operation);
    Arguments(operation, FindHostOperation(operation), std::move(effect["args"]));
}

void ReadableReplay::ShowDestroyed(const std::string& connector, OrderedJson& /*effect*/)
{
    mAlive.erase(connector);
    Sentence(Colour::kBlue, "the " + TitleOf(connector) + " is gone");
}

void ReadableReplay::ShowException(const std::string& what, OrderedJson& /*effect*/)
{
    mAlive.erase(mCreating);
    Sentence(Colour::kRed, "exception: " + what);
}

void ReadableReplay::Heading(Colour colour, const std::string& from, const std::string& to,
                             const std::string& what)
{
    mOutline.Put(Colour::kNone, std::string(mIndent - kInputIndent, ' '))
        .Put(Colour::kNone, from)
        .Put(Colour::kDim, " ─▶ ")
        .Put(Colour::kNone, to + "  ")
        .Put(colour, what)
        .EndLine();
}

void ReadableReplay::Sentence(Colour colour, const std::string& text)
{
    mOutline.Put(Colour::kNone, std::string(mIndent - kInputIndent, ' ')).Put(colour, text).EndLine();
}

template <class Row>
void ReadableReplay::Arguments(const std::string& name, const Row* row, OrderedJson arguments)
{
    const Labels& labels = Require(row, name + " is not an operation that session files know").labels;
    if (arguments.size() != labels.count)
        throw FormatError("the arguments of " + name + " have no names");
    OrderedJson labelled = OrderedJson::object();
    for (std::size_t i = 0; i < arguments.size(); ++i)
        labelled[std::string(labels.texts[i])] = std::move(arguments[i]);
    mOutline.PutValue(mIndent, labelled);
}

bool ReadableReplay::ExtendsRun(const std::string& operation)
{
    if (!IsRegistration(operation) || operation != mRunOperation) {
        EndRun();
        mRunOperation = operation;
    }
    return ++mRunLength > kShownOfRun;
}

void ReadableReplay::EndRun()
{
    if (mRunLength > kShownOfRun)
        mOutline.PutLines(kEffectIndent, Colour::kDim,
                          "… and " + std::to_string(mRunLength - kShownOfRun) + " more");
    mRunOperation.clear();
    mRunLength = 0;
}

void ReadableReplay::EndInput()
{
    EndRun();
    if (!mSilence.empty())
        Sentence(Colour::kDim, std::exchange(mSilence, {}));
}

std::string ReadableReplay::Connectors() const
{
    return mAlive.size() == 1 ? TitleOf(*mAlive.begin()) : "connectors";
}

}  // namespace Session
