#include "desk/Traffic.h"

#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/Marks.h"
#include "protocol/check/Check.h"
#include "session/SessionFile.h"
#include "session/format/Json.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace Desk {
namespace {

using Session::Json;

/// Texts beyond it are not checked: the recorder waits meanwhile.
constexpr std::size_t kLargestChecked = std::size_t{1} << 18;

/// A short text may have a finding for every four bytes.
constexpr std::size_t kMostFindings = 100;

constexpr std::string_view kComment = "# ";
/// How the recorder begins what no input caused.
constexpr std::string_view kOutside = "not inside an input that the recorder sees: ";

/// How the recorder begins, and begins anew where lines are lost: the state it has comes again behind it.
constexpr std::string_view kBegin = "A recording of ";

/// What the settings of one input do not leave for the next.
constexpr const char* kUsedUp[] = {"guids", "throwsAt"};

bool IsHandled(const std::string& type)
{
    const UTF16String identifier = ferrite::utility::UTF8to16(type);
    return AC::IngestGlintLibraryConnector::Handles(identifier) ||
           AC::IngestMediaCollectionConnector::Handles(identifier);
}

std::string StringIn(const Json& object, const char* member)
{
    const auto found = object.find(member);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

/// \param more Gets how many there are beside those that are returned.
Json FindingsOf(const std::string& xml, const std::string& type, std::size_t& more)
{
    Json findings = Json::array();
    if (xml.size() > kLargestChecked)
        return findings;
    auto all = Protocol::Check(Protocol::ThisModel(), xml, type);
    more = all.size() - std::min(all.size(), kMostFindings);
    all.resize(all.size() - more);
    for (const Protocol::Finding& each : all)
        findings.push_back({{"line", each.line},
                            {"column", each.column},
                            {"kind", each.kind},
                            {"path", each.path},
                            {"what", each.what},
                            {"advice", each.advice}});
    return findings;
}

std::string TextOf(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// \return The text without line breaks and other control characters.
std::string InOneLine(std::string text)
{
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f')
            c = ' ';
    return text;
}

bool BeginsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

}  // namespace

void Traffic::Take(const std::string& lines)
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        for (std::size_t begin = 0; begin < lines.size();) {
            const std::size_t end = std::min(lines.find('\n', begin), lines.size());
            try {
                TakeLine(lines.substr(begin, end - begin));
            } catch (const std::exception&) {  // of its form, or no memory
            }
            begin = end + 1;
        }
        Send();
    }
    mChanged();
}

void Traffic::TakeLine(const std::string& line)
{
    if (BeginsWith(line, kComment))
        return TakeComment(line.substr(kComment.size()));
    const Json json = Session::ParseJson(line);
    mTime = json.value("us", mTime);
    if (const auto host = json.find("host"); host != json.end()) {
        for (const auto& [key, value] : host->items())
            mStanding.host[key] = std::make_shared<const std::string>(Session::DumpJson(value));
        mShared.reset();
    }
    if (Session::IsEffect(json))
        TakeEffect(line, json, mInput);
    else
        TakeInput(line, json);
}

void Traffic::TakeComment(const std::string& comment)
{
    if (BeginsWith(comment, Marks::kPrefix))
        return TakeMark(Session::ParseJson(comment.substr(std::string_view(Marks::kPrefix).size())));
    if (BeginsWith(comment, kOutside)) {
        const std::string line = comment.substr(kOutside.size());
        return TakeEffect(line, Session::ParseJson(line), 0);
    }
    if (BeginsWith(comment, "lost: "))
        AddNote(comment, {}, {});
    if (BeginsWith(comment, kBegin)) {
        mStanding = {};
        mShared.reset();
        mRaised.reset();
    }
}

void Traffic::TakeMark(const Json& mark)
{
    if (mark.contains("raises")) {
        mRaised = Raised{StringIn(mark, "raises"), StringIn(mark, "by"), std::exchange(mNextMarks, {}),
                         mark.value("answered", false)};
    } else if (mark.contains("raised") && mRaised) {
        const Raised raised = *std::exchange(mRaised, std::nullopt);
        if (raised.isSeen)
            return;
        std::vector<std::string> marks = raised.marks;
        if (!raised.isAnswered)
            marks.emplace_back(Marks::kUnhandled);
        AddNote(raised.type + (raised.isAnswered ? " is for the host alone" : " is not listened for"),
                std::move(marks), raised.by);
    } else if (mark.contains("next")) {
        (mRaised && !mRaised->isSeen ? mRaised->marks : mNextMarks).push_back(StringIn(mark, "next"));
    } else if (mark.contains("last")) {
        if (mSent == mLast)  // pages have that line already
            AddNote("of the line before", {StringIn(mark, "last")}, {});
        else
            mEntries.back().marks.push_back(StringIn(mark, "last"));
    } else if (mark.contains("note")) {
        AddNote(StringIn(mark, "note"), {}, {});
    }
}

void Traffic::TakeRequest(const Json& line, Entry& entry, Json& members)
{
    entry.request = StringIn(line, "panel");
    bool isHandled = IsHandled(entry.request);
    // What the host alone answers the checker does not know.
    std::string event = entry.request;
    if (mRaised && !mRaised->isSeen && mRaised->type == entry.request) {
        mRaised->isSeen = true;
        entry.by = mRaised->by;
        members["by"] = entry.by;
        entry.marks = std::move(mRaised->marks);
        if (!isHandled && mRaised->isAnswered) {
            isHandled = true;
            event.clear();
        }
    } else {
        entry.marks = std::exchange(mNextMarks, {});
    }
    std::size_t more = 0;
    Json findings = FindingsOf(StringIn(line, "data"), event, more);
    if (!findings.empty())
        members["findings"] = std::move(findings);
    if (more > 0)
        entry.marks.push_back("and " + std::to_string(more) + " findings more");
    if (!isHandled)
        entry.marks.emplace_back(Marks::kUnhandled);
}

void Traffic::TakeInput(const std::string& text, const Json& line)
{
    if (!mShared)
        mShared = std::make_shared<const Standing>(mStanding);
    Entry entry;
    entry.line = text;
    entry.cause = mLast + 1;
    entry.standing = mShared;
    Json members = Json::object();
    if (line.contains("panel"))
        TakeRequest(line, entry, members);
    if (line.contains("create")) {
        mStanding.alive.push_back(StringIn(line, "create"));
        mShared.reset();
    }
    if (line.contains("register")) {
        mStanding.isRegistered = line["register"] == true;
        mShared.reset();
    }
    if (!line.contains("host")) {
        mOverview.Take(line, entry.by, entry.request);
        for (const char* const key : kUsedUp)
            if (mStanding.host.erase(key) > 0)
                mShared.reset();
    }
    mInput = mLast + 1;
    Add(std::move(entry), text, std::move(members));
}

void Traffic::TakeEffect(const std::string& text, const Json& line, std::uint64_t cause)
{
    const Entry* const input = cause == 0 ? nullptr : Find(cause);
    mOverview.Take(line, input == nullptr ? std::string() : input->by,
                   input == nullptr ? std::string() : input->request);
    if (line.contains("destroyed")) {
        auto& alive = mStanding.alive;
        alive.erase(std::remove(alive.begin(), alive.end(), StringIn(line, "destroyed")), alive.end());
        mShared.reset();
    }
    Entry entry;
    entry.line = text;
    entry.cause = cause;
    Json members = Json::object();
    if (cause != 0)
        members["cause"] = cause;
    Add(std::move(entry), text, std::move(members));
}

void Traffic::AddNote(const std::string& text, std::vector<std::string> marks, const std::string& by)
{
    Entry entry;
    entry.marks = std::move(marks);
    Json members = Json::object();
    if (!by.empty())
        members["by"] = by;
    Add(std::move(entry), TextOf({{"note", InOneLine(text)}, {"us", mTime}}), std::move(members));
}

void Traffic::Add(Entry entry, const std::string& line, Json members)
{
    members["number"] = mLast + 1;
    // The line as it is: one that nests deeply would take stack.
    entry.text = "{\"line\":" + line + ',' + TextOf(members).substr(1);
    ++mLast;
    mBytes += entry.line.size() + entry.text.size();
    mEntries.push_back(std::move(entry));
    while (mEntries.size() > 1 && (mEntries.size() > mLimits.mostEntries || mBytes > mLimits.mostBytes)) {
        mBytes -= mEntries.front().line.size() + mEntries.front().text.size();
        mEntries.pop_front();
    }
}

std::string Traffic::TextWithMarks(const Entry& entry)
{
    if (entry.marks.empty())
        return entry.text;
    return entry.text.substr(0, entry.text.size() - 1) + ",\"marks\":" + TextOf(entry.marks) + '}';
}

void Traffic::Send()
{
    if (mSent == mLast)
        return;
    std::vector<std::string> texts;
    if (!mPages.empty())
        for (std::uint64_t number = std::max(mSent + 1, First()); number <= mLast; ++number)
            texts.push_back(TextWithMarks(*Find(number)));
    mSent = mLast;
    for (const Frame& frame : WriteTraffic(texts))
        for (const LinkRef& page : mPages)
            page->Send(frame);
}

void Traffic::Welcome(const LinkRef& link, const ToolHello& hello)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    Send();
    link->Send(WriteToolWelcome(mLast));
    if (!hello.wantsTraffic)
        return;
    std::vector<std::string> texts;
    const std::uint64_t heard = hello.heard > mLast ? 0 : hello.heard;  // else of another desk
    for (std::uint64_t number = std::max(heard + 1, First()); number <= mLast; ++number)
        texts.push_back(TextWithMarks(*Find(number)));
    for (const Frame& frame : WriteTraffic(texts))
        link->Send(frame);
    mPages.push_back(link);
}

void Traffic::Detach(const LinkRef& link)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mPages.erase(std::remove(mPages.begin(), mPages.end(), link), mPages.end());
}

const Traffic::Entry* Traffic::Find(std::uint64_t number) const
{
    return number < First() || number > mLast ? nullptr : &mEntries[number - First()];
}

std::optional<std::string> Traffic::RequestText(std::uint64_t number) const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    const Entry* const entry = Find(number);
    if (entry == nullptr || entry->request.empty())
        return std::nullopt;
    return StringIn(Session::ParseJson(entry->line), "data");
}

std::vector<Traffic::Passage> Traffic::Passages(const std::vector<std::uint64_t>& numbers) const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    std::vector<Passage> passages;
    std::vector<std::uint64_t> ordered = numbers;
    std::sort(ordered.begin(), ordered.end());
    ordered.erase(std::unique(ordered.begin(), ordered.end()), ordered.end());
    for (const std::uint64_t number : ordered) {
        const Entry* const input = Find(number);
        if (input == nullptr || input->cause != number || BeginsWith(input->line, "{\"host\""))
            continue;
        Passage passage{{input->line}, Json::object(), input->standing->alive, input->standing->isRegistered};
        for (const auto& [key, value] : input->standing->host)
            passage.host[key] = Session::ParseJson(*value);
        for (std::uint64_t next = number + 1; next <= mLast; ++next) {
            const Entry& effect = *Find(next);
            if (effect.cause == next)
                break;
            if (effect.cause == number)
                passage.lines.push_back(effect.line);
        }
        passages.push_back(std::move(passage));
    }
    return passages;
}

}  // namespace Desk
