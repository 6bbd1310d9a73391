#include "desk/Traffic.h"

#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/Marks.h"
#include "protocol/check/Check.h"
#include "session/SessionFile.h"
#include "session/format/FormatError.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Desk {
namespace {

using Session::Json;

/// Texts beyond it are not checked: the recorder waits meanwhile.
constexpr std::size_t kLargestChecked = std::size_t{1} << 18;

constexpr std::string_view kComment = "# ";
/// How the recorder begins what no input caused.
constexpr std::string_view kOutside = "not inside an input that the recorder sees: ";

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

Json FindingsOf(const std::string& xml, const std::string& type)
{
    Json findings = Json::array();
    if (xml.size() > kLargestChecked)
        return findings;
    for (const Protocol::Finding& each : Protocol::Check(Protocol::ThisModel(), xml, type))
        findings.push_back({{"line", each.line},
                            {"column", each.column},
                            {"kind", each.kind},
                            {"path", each.path},
                            {"what", each.what},
                            {"advice", each.advice}});
    return findings;
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
            } catch (const Session::FormatError&) {
            } catch (const Json::exception&) {
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
    if (json.contains("host")) {
        mStanding.host.update(json["host"]);
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
}

void Traffic::TakeMark(const Json& mark)
{
    if (mark.contains("raises")) {
        mRaised = Raised{StringIn(mark, "raises"), StringIn(mark, "by"), std::exchange(mNextMarks, {})};
    } else if (mark.contains("raised") && mRaised) {
        const Raised raised = *std::exchange(mRaised, std::nullopt);
        if (raised.isSeen)
            return;
        std::vector<std::string> marks = raised.marks;
        marks.push_back(Marks::kUnhandled);
        AddNote(raised.type + " is not listened for", std::move(marks), raised.by);
    } else if (mark.contains("next")) {
        (mRaised && !mRaised->isSeen ? mRaised->marks : mNextMarks).push_back(StringIn(mark, "next"));
    } else if (mark.contains("last") && !mEntries.empty()) {
        mEntries.back().marks.push_back(StringIn(mark, "last"));
    } else if (mark.contains("note")) {
        AddNote(StringIn(mark, "note"), {}, {});
    }
}

void Traffic::TakeInput(const std::string& text, const Json& line)
{
    if (!mShared)
        mShared = std::make_shared<const Standing>(mStanding);
    Entry entry;
    entry.line = text;
    entry.cause = mLast + 1;
    entry.standing = mShared;
    Json members = {{"line", line}};
    const std::string type = StringIn(line, "panel");
    if (!type.empty()) {
        if (mRaised && !mRaised->isSeen && mRaised->type == type) {
            mRaised->isSeen = true;
            entry.by = mRaised->by;
            entry.marks = std::move(mRaised->marks);
        } else {
            entry.marks = std::exchange(mNextMarks, {});
        }
        entry.request = type;
        if (!entry.by.empty())
            members["by"] = entry.by;
        Json findings = FindingsOf(StringIn(line, "data"), type);
        if (!findings.empty())
            members["findings"] = std::move(findings);
        if (!IsHandled(type))
            entry.marks.emplace_back(Marks::kUnhandled);
    }
    if (line.contains("create"))
        mStanding.alive.push_back(StringIn(line, "create"));
    if (line.contains("register"))
        mStanding.isRegistered = line["register"] == true;
    if (!line.contains("host")) {
        mOverview.Take(line, entry.by, entry.request);
        for (const char* const key : kUsedUp)
            mStanding.host.erase(key);
        mShared.reset();
    }
    mInput = mLast + 1;
    Add(std::move(entry), members);
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
    Json members = {{"line", line}};
    if (cause != 0)
        members["cause"] = cause;
    Add(std::move(entry), members);
}

void Traffic::AddNote(const std::string& text, std::vector<std::string> marks, const std::string& by)
{
    Entry entry;
    entry.marks = std::move(marks);
    Json members = {{"line", {{"note", text}, {"us", mTime}}}};
    if (!by.empty())
        members["by"] = by;
    Add(std::move(entry), members);
}

void Traffic::Add(Entry entry, const Json& members)
{
    Json json = members;
    json["number"] = ++mLast;
    entry.text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    mBytes += entry.line.size() + entry.text.size();
    mEntries.push_back(std::move(entry));
    while (mEntries.size() > 1 && (mEntries.size() > mLimits.mostEntries || mBytes > mLimits.mostBytes)) {
        mBytes -= mEntries.front().line.size() + mEntries.front().text.size();
        mEntries.pop_front();
    }
}

std::string Traffic::TextOf(const Entry& entry)
{
    if (entry.marks.empty())
        return entry.text;
    std::string text = entry.text;
    text.pop_back();
    return text + ",\"marks\":" + Json(entry.marks).dump(-1, ' ', false, Json::error_handler_t::replace) +
           '}';
}

void Traffic::Send()
{
    if (mSent == mLast)
        return;
    std::vector<std::string> texts;
    if (!mPages.empty())
        for (std::uint64_t number = std::max(mSent + 1, First()); number <= mLast; ++number)
            texts.push_back(TextOf(*Find(number)));
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
    for (std::uint64_t number = std::max(hello.heard > mLast ? 1 : hello.heard + 1, First()); number <= mLast;
         ++number)
        texts.push_back(TextOf(*Find(number)));
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
        Passage passage{
            {input->line}, input->standing->host, input->standing->alive, input->standing->isRegistered};
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
