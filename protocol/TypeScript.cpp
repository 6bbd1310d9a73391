#include "protocol/TypeScript.h"

#include "protocol/MemberPaths.h"

#include <iterator>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace Protocol {
namespace {

using Names = std::set<std::string_view>;

/// What does not depend on the model.
constexpr const char* kBegin = R"(
/** 36 characters with hyphens, in lower case. */
export type Guid = string;

/**
 * A time in ticks, of which a second has 254016000000. A `bigint`, since a time has 64 bits and a `number` keeps 53:
 * read the JSON with a parser that keeps whole numbers, and write it with one that writes a `bigint` as a number.
 */
export type Ticks = bigint;

/** A frame rate as ticks per frame, 10160640000 for 25 frames per second. A `bigint` like a time, with 64 bits, too. */
export type Rate = bigint;
)";

constexpr const char* kHelpers = R"(
/** The members of a message but for its header. */
export type Content = Exclude<keyof Message, "header">;

/** A value as `encode` takes it: records may leave members out, which then are as the host constructs them. */
export type Sparse<Value> = Value extends readonly unknown[]
    ? { [Index in keyof Value]: Sparse<Value[Index]> }
    : Value extends object
    ? { [Name in keyof Value]?: Sparse<Value[Name]> }
    : Value;

/** A request that the host heeds with all of `Needed`, and in which it reads `Read`, too. */
export type RequestWith<Needed extends Content, Read extends Content> = Pick<Message, "header"> &
    { [Name in Needed]-?: Sparse<NonNullable<Message[Name]>> } &
    { [Name in Read]?: Sparse<Message[Name]> };

/** A notification that can hold `Carried`. */
export type NotificationWith<Carried extends Content> = Pick<Message, "header" | Carried>;
)";

constexpr const char* kEnd = R"(
/** The notifications, one of which answers the request; `never` where none does. */
export type AnswerOf<Request extends keyof Requests> = Notifications[Answers[Request]];
)";

/// \return A comment, with a line feed behind it; empty without a text.
std::string Comment(std::string_view indent, const std::string& text)
{
    std::string comment;
    if (text.empty())
        return comment;
    comment.append(indent).append("/** ");
    for (std::size_t at = 0; at < text.size(); ++at) {
        comment += text[at];
        if (text.compare(at, 2, "*/") == 0)
            comment += ' ';
    }
    return comment + " */\n";
}

std::string Quoted(std::string_view text)
{
    return std::string("\"").append(text) + '"';
}

/// \return The names as a union; "never" for none.
std::string Union(const Names& names)
{
    std::string text;
    for (const std::string_view name : names)
        text.append(text.empty() ? "" : " | ").append(Quoted(name));
    return text.empty() ? "never" : text;
}

/// \return The TypeScript of Member::type.
std::string TypeOf(std::string_view type)
{
    static const std::map<std::string_view, const char*> kSimple = {
        {"string", "string"}, {"boolean", "boolean"}, {"integer", "number"},    {"guid", "Guid"},
        {"rate", "Rate"},     {"object", "unknown"},  {"time", "Ticks | null"},
    };
    if (TakeTypeWord(type, "record:"))
        return std::string(type);
    if (TakeTypeWord(type, "nullable:"))
        return TypeOf(type) + " | null";
    if (TakeTypeWord(type, "list:"))
        return "Array<" + TypeOf(type) + '>';
    if (TakeTypeWord(type, "map:")) {
        const std::size_t colon = type.find(':');
        return "Array<[" + TypeOf(type.substr(0, colon)) + ", " + TypeOf(type.substr(colon + 1)) + "]>";
    }
    return kSimple.at(type);
}

class Writer
{
public:
    explicit Writer(const Model& model) : mModel(model) {}

    std::string Write()
    {
        mText = "// The messages between HTML panels and the host, asset-connector " + mModel.version +
                ", as the JSON of\n// `asset-connector decode` and `encode`.\n";
        mText += kBegin;
        FindDocuments();
        for (const Record& record : mModel.records)
            WriteRecord(record);
        mText += kHelpers;
        for (const Event& event : mModel.events)
            mText.append("\n")
                .append(Comment("", event.about))
                .append("export type " + TypeName(event) + " = " + TypeOfEvent(event) + ";\n");
        WriteEventMap("Requests", "Every request by its identifier.", "request", TypeName);
        WriteEventMap("Notifications", "Every notification by its identifier.", "notification", TypeName);
        WriteEventMap(
            "Answers", "The identifiers of the notifications, one of which answers a request.", "request",
            [](const Event& event) { return Union(Names(event.answers.begin(), event.answers.end())); });
        mText += kEnd;
        return std::move(mText);
    }

private:
    /// Members of a record with what is said of the place that carries them.
    void FindDocuments()
    {
        for (const Place& place : mModel.places)
            for (const std::string& path : MembersOf(place)) {
                const MemberPlace found = FindMember(mModel, path);
                if (found.member != nullptr)
                    mDocuments.emplace(found.member, '`' + place.path + "`: " + place.about +
                                                         NumbersOf(place, *found.member));
            }
    }

    /// \return What the words of a place are in a member that is a number.
    std::string NumbersOf(const Place& place, const Member& member) const
    {
        const Form* const form = FindForm(mModel, place.form);
        std::string text;
        if (form != nullptr && member.type == "integer")
            for (std::size_t i = 0; i < form->values.size(); ++i)
                text.append(i == 0 ? " In numbers: " : ", ")
                    .append(std::to_string(form->values[i]) + " `" + form->words[i] + '`');
        return text.empty() ? text : text + '.';
    }

    /// A list that can stand twice carries two members, both of which its places name.
    bool IsOfSeveral(const Place& place) const
    {
        const std::string_view path = place.path;
        const Place* const list = FindPlace(mModel, path.substr(0, path.find_first_of("/@")));
        return list != nullptr && list->most > 1 && !place.also.empty();
    }

    std::vector<std::string> MembersOf(const Place& place) const
    {
        std::vector<std::string> members = {place.member};
        if (IsOfSeveral(place))
            members.insert(members.end(), place.also.begin(), place.also.end());
        return members;
    }

    /// \return The members of the message that requests or notifications have at these places.
    Names RootMembers(const std::vector<std::string>& paths, bool Place::*used) const
    {
        Names names;
        for (const std::string& path : paths) {
            const Place* const place = FindPlace(mModel, path);
            // Of two lists of one name the first is read; of those written, places of both do not tell which.
            if (place != nullptr && !place->member.empty() &&
                !(used == &Place::written && IsOfSeveral(*place)))
                names.insert(RootMemberOf(place->member));
        }
        names.erase("header");
        return names;
    }

    void WriteRecord(const Record& record)
    {
        const bool isMessage = record.name == "Message";
        mText.append("\n");
        if (isMessage)
            mText +=
                Comment("", "A message. What is as the host constructs it is left out, but for the header.");
        mText += "export interface " + record.name + " {\n";
        for (const Member& member : record.members) {
            const auto document = mDocuments.find(&member);
            if (document != mDocuments.end())
                mText += Comment("    ", document->second);
            const bool isOptional = isMessage && member.type != "record:Header";
            mText += "    " + member.name + (isOptional ? "?: " : ": ") + TypeOf(member.type) + ";\n";
        }
        mText += "}\n";
    }

    static std::string TypeName(const Event& event)
    {
        std::string name(ShortName(event.identifier));
        if (name[0] >= 'a' && name[0] <= 'z')
            name[0] = static_cast<char>(name[0] - 'a' + 'A');
        return name + (event.kind == "request" ? "Request" : "Notification");
    }

    std::string TypeOfEvent(const Event& event) const
    {
        return event.kind == "request" ? TypeOfRequest(event) : TypeOfNotification(event);
    }

    /// Needed is what each connector needs; what one alone reads may be there.
    std::string TypeOfRequest(const Event& event) const
    {
        Names read;
        Names needed;
        bool isFirst = true;
        for (const Handling& handling : event.handling) {
            if (!handling.handled)
                continue;
            read.merge(RootMembers(handling.reads, &Place::read));
            Names needs = RootMembers(handling.needs, &Place::read);
            for (auto at = needed.begin(); at != needed.end();)
                at = needs.count(*at) == 0 ? needed.erase(at) : std::next(at);
            if (std::exchange(isFirst, false))
                needed = std::move(needs);
        }
        for (const std::string_view name : needed)
            read.erase(name);
        return "RequestWith<" + Union(needed) + ", " + (isFirst ? "Content" : Union(read)) + '>';
    }

    std::string TypeOfNotification(const Event& event) const
    {
        Names carried;
        for (const Sending& sending : event.sent)
            carried.merge(RootMembers(sending.carries, &Place::written));
        return event.sent.empty() ? "Message" : "NotificationWith<" + Union(carried) + '>';
    }

    template <class TypeOfEntry>
    void WriteEventMap(const char* name, const char* about, std::string_view kind, TypeOfEntry typeOf)
    {
        mText.append("\n").append(Comment("", about)).append("export interface ").append(name) += " {\n";
        for (const Event& event : mModel.events)
            if (event.kind == kind)
                mText.append(Comment("    ", event.about))
                    .append("    " + Quoted(event.identifier) + ": " + typeOf(event) + ";\n");
        mText += "}\n";
    }

    const Model& mModel;
    std::map<const Member*, std::string> mDocuments;
    std::string mText;
};

}  // namespace

std::string TypeScript(const Model& model)
{
    return Writer(model).Write();
}

}  // namespace Protocol
