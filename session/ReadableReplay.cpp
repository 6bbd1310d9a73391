#include "session/ReadableReplay.h"

#include "session/ConnectorKinds.h"
#include "session/NotificationText.h"

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

void ReadableReplay::OnInput(const Line& /*line*/, const Json& json, const BoundCall& input)
{
    EndInput();
    mAfterComment = false;
    mOutline.EndLine();
    mIndent = kInputIndent;
    mSilence = "nothing happens";
    mCreating = TextOf(json, "create");
    mSpeaker = Connectors();
    const ValueWriter writer(Style::kReadable);
    if (json.contains("create")) {
        Sentence(Colour::kBlue, "host creates the " + TitleOf(mCreating));
        mAlive.insert(mCreating);
        mSpeaker = TitleOf(mCreating);
    } else if (json.contains("release")) {
        Sentence(Colour::kBlue, "host drops the " + TitleOf(TextOf(json, "release")));
    } else if (json.contains("register")) {
        mSpeaker = kLibrary;
        Sentence(Colour::kBlue, json["register"] ? "host asks for the panels' requests"
                                                 : "host no longer wants the panels' requests");
    } else if (json.contains("panel")) {
        Heading(Colour::kCyan, "panel", mSpeaker, ShortName(TextOf(json, "panel")));
        mOutline.PutLines(mIndent, Colour::kNone, IndentedXML(json["data"]));
        mSilence = "nothing happens: the request is not registered, or no connector acts on it";
    } else if (json.contains("station")) {
        Heading(Colour::kCyan, "host", "station " + TextOf(json, "station"), TextOf(json, "message"));
        if (json.contains("data")) {
            mOutline.PutLines(mIndent, Colour::kCyan, ShortName(TextOf(json, "type")));
            mOutline.PutLines(mIndent, Colour::kNone, IndentedXML(json["data"]));
        }
    } else if (json.contains("callback")) {
        const std::string name = TextOf(json, "callback");
        mSpeaker = TitleOf(TextOf(json, "to"));
        Heading(Colour::kGreen, "ingest library", mSpeaker, name);
        Arguments(FindCallback(name)->labels, input.arguments(writer));
    } else if (json.contains("host")) {
        mSilence.clear();
        Sentence(Colour::kBlue, "host from here on");
        mOutline.PutValue(mIndent, OrderedJson::parse(DumpJson(json["host"])));
    } else if (json.contains("ui")) {
        Sentence(Colour::kBlue, "user-interface thread delivers what was posted");
    } else {
        const std::string name = TextOf(json, "call");
        mSpeaker = kLibrary;
        Heading(Colour::kBlue, "host", mSpeaker, name);
        Arguments(FindExportedFunction(name)->labels, input.arguments(writer));
    }
    mIndent = kEffectIndent;
}

void ReadableReplay::OnEffect(OrderedJson& effect)
{
    mSilence.clear();
    if (ExtendsRun(TextOf(effect, "hostCall")))
        return;
    const std::string subject = effect.front().get<std::string>();
    if (effect.contains("dispatcher")) {
        Heading(Colour::kYellow, mSpeaker, "dispatcher", subject);
        Arguments(FindDispatcherOperation(subject)->labels, std::move(effect["args"]));
    } else if (effect.contains("notification")) {
        Heading(Colour::kMagenta, mSpeaker, "panel", ShortName(subject));
        mOutline.PutLines(mIndent, Colour::kNone, IndentedXML(effect["data"]));
    } else if (effect.contains("post")) {
        Heading(Colour::kCyan, mSpeaker + " posts", "station " + TextOf(effect, "station"),
                subject + (effect["flag"] ? ", flagged" : ""));
        mOutline.PutValue(mIndent, effect["payload"]);
    } else if (effect.contains("deliver")) {
        Heading(Colour::kCyan, "user-interface thread", "station " + TextOf(effect, "station"),
                subject + ", as posted");
    } else if (effect.contains("hostCall")) {
        Heading(Colour::kBlue, mSpeaker, "host", subject);
        Arguments(FindHostOperation(subject)->labels, std::move(effect["args"]));
    } else if (effect.contains("destroyed")) {
        mAlive.erase(subject);
        Sentence(Colour::kBlue, "the " + TitleOf(subject) + " is gone");
    } else {
        mAlive.erase(mCreating);
        Sentence(Colour::kRed, "exception: " + subject);
    }
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

void ReadableReplay::Arguments(const Labels& labels, OrderedJson arguments)
{
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
