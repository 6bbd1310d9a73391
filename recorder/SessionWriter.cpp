#include "recorder/SessionWriter.h"

#include "session/format/JsonText.h"

#include <algorithm>
#include <map>
#include <utility>

namespace Recording {
namespace {

using Session::JsonText;

/// The host's calls when connectors are made and requests registered.
constexpr const char* kQuietStart =
    "{\"host\":{\"quiet\":[\"Kiln::StationUtils::AddListener\",\"PlexaManager::AddTandemEventListener\"]}}\n";
constexpr const char* kQuietEnd = "{\"host\":{\"quiet\":[]}}\n";

constexpr const char* kBrowserID = "PlexaManager::GetBrowserID";

bool AllSame(const std::vector<std::string>& texts)
{
    return std::adjacent_find(texts.begin(), texts.end(), std::not_equal_to<>()) == texts.end();
}

void WriteAnswer(JsonText& out, const char* operation, const std::string& question, const std::string& answer)
{
    out.BeginArray();
    out.String(std::string_view(operation));
    out.Bare(question);
    out.Bare(answer);
    out.EndArray();
}

}  // namespace

SessionWriter::SessionWriter(const Options& options, Troubles& troubles)
    : mMasksContents(options.masksContents), mFiles(options, troubles)
{
    mTold.hasDispatcher.fill(true);
    BeginFile();
}

void SessionWriter::Write(const std::vector<Journal::InputPtr>& inputs)
{
    for (const Journal::InputPtr& input : inputs) {
        if (input->isLost)
            mLost += input->lines;
        else if (!mFiles.IsOpen() || mLost != 0 || mFiles.IsFull())
            BeginFile();
        if (!input->isLost) {
            if (mFiles.IsOpen())
                WriteOne(*input);
            else
                mLost += input->lines;
        }
        Change(input->change);
        mPosted += input->posts;
        if (input->type == Input::Type::kDelivery)
            AddDelivery(*input);
        WriteDeliveries();
    }
    Emit();
}

void SessionWriter::WriteOne(const Input& input)
{
    if (input.type == Input::Type::kDelivery)
        return;
    if (input.type == Input::Type::kOutside)
        return PutComment(input.text.Text());
    std::string comments;
    if (input.isNested)
        comments += "# begun inside an input of the same thread, which was not through\n";
    if (input.overlaps != 0)
        comments += "# begun while " + std::to_string(input.overlaps) +
                    " other thread(s) were inside inputs: their order is that of their beginnings\n";
    if (input.isPassedOver)
        comments += "# begun before lines above, but not through when they were written\n";
    if (input.endedByException && !input.thrown)
        comments += "# no operation of the host threw this exception: a replay cannot\n";
    Put(comments + HostLine(input) + input.text.Text(), input.lines);
}

void SessionWriter::Change(const Recording::Change& change)
{
    if (change.created)
        mState.connectors.push_back(*change.created);
    if (change.destroyed) {
        auto& alive = mState.connectors;
        alive.erase(std::remove(alive.begin(), alive.end(), *change.destroyed), alive.end());
        if (Session::kConnectorKinds[*change.destroyed].name == "library")
            mState.readsFromDisk = false;
    }
    if (change.hasDispatcher)
        mState.hasDispatcher[change.hasDispatcher->first] = change.hasDispatcher->second;
    if (change.registered)
        mState.registered = *change.registered;
    if (change.readsFromDisk)
        mState.readsFromDisk = *change.readsFromDisk;
}

void SessionWriter::BeginFile()
{
    if (mFiles.IsOpen() && mLost != 0)
        Put("# lost: " + std::to_string(mLost) +
                " lines that the disk did not take in time; the next file goes on with what it needs\n",
            0);
    Emit();
    if (!mFiles.BeginNext())
        return;
    mOfEarlierFiles += mPosted - mDelivered;
    mPosted = mDelivered = 0;
    mDeliveries.clear();
    mTold = {};
    mTold.hasDispatcher.fill(true);
    mMasking = std::make_unique<Masking>(mMasksContents);

    std::string start =
        "# A recording of a host and asset-connector. Replay it: asset-connector replay FILE\n";
    if (mLost != 0)
        start += "# " + std::to_string(mLost) + " lines before this file were lost\n";
    mLost = 0;
    if (mMasksContents)
        start += "# Words are masked, the same one by the same mask.\n";
    if (!mState.connectors.empty() || mState.registered) {
        start += "# The state in which this file begins.\n";
        start += kQuietStart;
        if (mState.registered)
            start += "{\"register\":true}\n";
        JsonText host;
        AddDispatchers(mState.hasDispatcher, host);
        if (!host.Text().empty())
            start += "{\"host\":{" + host.Text() + "}}\n";
        for (const Kind kind : mState.connectors)
            start += "{\"create\":\"" + std::string(Session::kConnectorKinds[kind].name) + "\"}\n";
        if (mState.readsFromDisk)
            start += "{\"host\":{\"readsFromDisk\":true}}\n";
        start += kQuietEnd;
    }
    Put(start, 0);
}

std::string SessionWriter::HostLine(const Input& input)
{
    JsonText host;
    auto hasDispatcher = mTold.hasDispatcher;
    if (input.change.hasDispatcher)
        hasDispatcher[input.change.hasDispatcher->first] = input.change.hasDispatcher->second;
    AddDispatchers(hasDispatcher, host);
    AddAnswers(input, host);
    if (!input.guids.empty()) {
        host.Name("guids");
        host.BeginArray();
        for (const ferrite::utility::Guid& guid : input.guids)
            host.String(guid);
        host.EndArray();
    }
    if (input.thrown) {
        const auto calls = std::find_if(input.calls.begin(), input.calls.end(), [&input](const auto& each) {
            return each.first == input.thrown->first;
        });
        host.Name("throwsAt");
        host.BeginArray();
        host.BeginArray();
        host.String(std::string_view(input.thrown->first));
        host.Number(calls == input.calls.end() ? 1 : calls->second);
        host.String(input.thrown->second);
        host.EndArray();
        host.EndArray();
    }
    return host.Text().empty() ? std::string() : "{\"host\":{" + host.Text() + "}}\n";
}

void SessionWriter::AddDispatchers(const std::array<bool, kKindCount>& hasDispatcher, JsonText& host)
{
    if (hasDispatcher == mTold.hasDispatcher)
        return;
    mTold.hasDispatcher = hasDispatcher;
    host.Name("withoutDispatcher");
    host.BeginArray();
    for (Kind kind = 0; kind < kKindCount; ++kind)
        if (!hasDispatcher[kind])
            host.String(Session::kConnectorKinds[kind].name);
    host.EndArray();
}

void SessionWriter::AddAnswers(const Input& input, JsonText& host)
{
    const bool sameBrowserIDs = AllSame(input.browserIDs);
    if (!input.browserIDs.empty() && sameBrowserIDs && input.browserIDs.front() != mTold.browserID) {
        mTold.browserID = input.browserIDs.front();
        host.Name("browserID");
        host.String(mTold.browserID);
    }
    if (input.answers.empty() && (input.browserIDs.empty() || (sameBrowserIDs && !mTold.answersBrowserID)))
        return;  // nothing was asked that an earlier answer could spoil

    // A question with one unusual answer is told with all of them: they come in order.
    std::map<std::pair<std::string_view, std::string_view>, bool> isUnusual;
    for (const Answer& each : input.answers)
        isUnusual[{each.operation, each.question}] |= mMasksContents || !each.isUsual;
    JsonText answers;
    answers.BeginArray();
    if (!sameBrowserIDs)
        for (const std::string& id : input.browserIDs) {
            JsonText text;
            text.String(id);
            WriteAnswer(answers, kBrowserID, "[]", text.Text());
        }
    for (const Answer& each : input.answers)
        if (isUnusual[{each.operation, each.question}])
            WriteAnswer(answers, each.operation, each.question, each.answer);
    answers.EndArray();
    if (sameBrowserIDs && answers.Text() == mTold.answers)
        return;
    mTold.answers = answers.Text();
    mTold.answersBrowserID = !sameBrowserIDs;
    host.Name("answers");
    host.Bare(mTold.answers);
}

void SessionWriter::AddDelivery(const Input& input)
{
    if (mOfEarlierFiles != 0) {
        --mOfEarlierFiles;
        return;
    }
    ++mDelivered;
    mDeliveries += input.text.Text();
}

void SessionWriter::WriteDeliveries()
{
    if (mDelivered == 0 || mDelivered < mPosted || mLost != 0)
        return;
    Put("{\"ui\":true}\n" + mDeliveries, 1 + mDelivered);
    mDeliveries.clear();
    mPosted = mDelivered = 0;
}

void SessionWriter::Put(const std::string& text, std::size_t lines)
{
    mBlock += mMasking == nullptr ? text : mMasking->Masked(text);
    mBlockLines += lines;
    constexpr std::size_t kLargeBlock = std::size_t{1} << 20U;
    if (mBlock.size() > kLargeBlock)
        Emit();
}

void SessionWriter::PutComment(const std::string& lines)
{
    std::string comments;
    for (std::size_t begin = 0; begin < lines.size();) {
        const std::size_t end = lines.find('\n', begin) + 1;
        comments += "# not inside an input that the recorder sees: " + lines.substr(begin, end - begin);
        begin = end;
    }
    Put(comments, 0);
}

void SessionWriter::Emit()
{
    if (mBlock.empty())
        return;
    if (!mFiles.IsOpen() || !mFiles.Write(mBlock))
        mLost += mBlockLines;
    mBlock.clear();
    mBlockLines = 0;
}

}  // namespace Recording
