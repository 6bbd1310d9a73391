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

/// How many bytes of deliveries wait for the last one.

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
    : mMasksContents(options.masksContents), mFiles(options, troubles), mTroubles(troubles)
{
    mTold.hasDispatcher.fill(true);
    BeginFile();
}

template <class Action>
bool SessionWriter::Guard(Action action) noexcept
{
    try {
        action();
        return true;
    } catch (const std::exception& exception) {
        mTroubles.Tell("writer", "the recorder could not write: ", exception.what());
    } catch (...) {  // of the XML library
        mTroubles.Tell("writer", "the recorder could not write");
    }
    return false;
}

void SessionWriter::Write(const std::vector<Journal::InputPtr>& inputs) noexcept
{
    for (const Journal::InputPtr& input : inputs) {
        bool isWritten = false;
        Guard([&] { isWritten = TryToWrite(*input); });
        if (!isWritten)
            mLost += input->lines;
        Guard([&] { Change(input->change); });
        Guard([&] {
            AddDeliveries(*input, isWritten);
            WriteDeliveries();
        });
        Miss(*input);
    }
    Guard([&] { Emit(); });
}

void SessionWriter::Miss(const Input& input) noexcept
{
    mLost += input.missed;
    for (Kind kind = 0; kind < kKindCount; ++kind)
        if ((input.missedEnds & 1U << kind) != 0) {
            Recording::Change change;
            change.destroyed = kind;
            Change(change);
        }
}

void SessionWriter::Finish() noexcept
{
    Guard([&] {
        if (mFiles.IsOpen() && mLost != 0)
            PutLost();
        Emit();
    });
}

bool SessionWriter::TryToWrite(const Input& input)
{
    if (input.isLost) {
        mTroubles.Tell(
            "lost", "lines are lost: more waits to be written than the buffer holds; the files say how many");
        return false;
    }
    if (!mFiles.IsOpen() || mLost != 0 || mFiles.IsFull(mBlock.size()))
        BeginFile();
    if (!mFiles.IsOpen())
        return false;
    WriteOne(input);
    return true;
}

void SessionWriter::WriteOne(const Input& input)
{
    if (input.type == Input::Type::kDelivery)
        return;
    if (input.type == Input::Type::kOutside)
        return PutComment(input.text.Text());
    if (input.type == Input::Type::kNote)
        return Put(input.text.Text(), 0);
    std::string comments;
    if (input.isNested)
        comments += "# begun inside an input of the same thread, which was not through\n";
    if (input.overlaps != 0)
        comments += "# begun while " + std::to_string(input.overlaps) +
                    " other thread(s) were inside inputs: their order is that of their beginnings\n";
    if (input.isPassedOver)
        comments += "# begun before lines above, but not through when they were written\n";
    if (input.endedByException && input.thrown.empty())
        comments +=
            "# no operation of the host threw this exception: a replay does only if the library itself did\n";
    if (input.hasHalfPair)
        comments += "# half a surrogate pair stands as U+FFFD: a replay reads what the library dropped\n";
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

void SessionWriter::PutLost()
{
    Put("# lost: " + std::to_string(mLost) +
            " lines that were not written in time; the next file goes on with what it needs\n",
        0);
}

void SessionWriter::BeginFile()
{
    if (mFiles.IsOpen() && mLost != 0)
        PutLost();
    Emit();
    if (!mFiles.BeginNext())
        return;
    mDeliveries.Forget();
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
            start += R"({"create":")" + std::string(Session::kConnectorKinds[kind].name) + "\"}\n";
        const auto isLibrary = [](Kind kind) { return Session::kConnectorKinds[kind].name == "library"; };
        if (mState.readsFromDisk &&
            std::any_of(mState.connectors.begin(), mState.connectors.end(), isLibrary))
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
    // Another thread may have turned it, in an input that stands elsewhere.
    if (input.readFromDisk.value_or(mState.readsFromDisk) != mState.readsFromDisk) {
        mState.readsFromDisk = *input.readFromDisk;
        host.Name("readsFromDisk");
        host.Bool(mState.readsFromDisk);
    }
    AddAnswers(input, host);
    if (!input.guids.empty()) {
        host.Name("guids");
        host.BeginArray();
        for (const ferrite::utility::Guid& guid : input.guids)
            host.String(guid);
        host.EndArray();
    }
    if (!input.thrown.empty()) {
        host.Name("throwsAt");
        host.BeginArray();
        for (const Thrown& each : input.thrown) {
            host.BeginArray();
            host.String(std::string_view(each.operation));
            host.Number(each.call);
            host.String(each.what);
            host.EndArray();
        }
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
    struct Question
    {
        const std::string& firstAnswer;
        bool isUnusual;
    };
    std::map<std::pair<std::string_view, std::string_view>, Question> questions;
    bool isUsedUp = false;  // an input uses up a series of answers
    for (const Answer& each : input.answers) {
        const auto found =
            questions.try_emplace({each.operation, each.question}, Question{each.answer, mMasksContents})
                .first;
        found->second.isUnusual = found->second.isUnusual || !each.isUsual;
        isUsedUp = isUsedUp || found->second.firstAnswer != each.answer;
    }
    JsonText answers;
    answers.BeginArray();
    if (!sameBrowserIDs)
        for (const std::string& id : input.browserIDs) {
            JsonText text;
            text.String(id);
            WriteAnswer(answers, kBrowserID, "[]", text.Text());
        }
    for (const Answer& each : input.answers)
        if (questions.at({each.operation, each.question}).isUnusual)
            WriteAnswer(answers, each.operation, each.question, each.answer);
    answers.EndArray();
    if (sameBrowserIDs && !isUsedUp && answers.Text() == mTold.answers)
        return;
    mTold.answers = answers.Text();
    mTold.answersBrowserID = !sameBrowserIDs;
    host.Name("answers");
    host.Bare(mTold.answers);
}

void SessionWriter::AddDeliveries(const Input& input, bool isWritten)
{
    if (!isWritten)
        return;
    for (const std::size_t message : input.posts)
        mDeliveries.Posted(message);
    if (input.type == Input::Type::kDelivery)
        mDeliveries.Delivered(input.delivered, input.text.Text());
}

void SessionWriter::WriteDeliveries()
{
    const std::vector<std::string> lines = mDeliveries.Take();
    if (lines.empty())
        return;
    std::string text = "{\"ui\":true}\n";
    for (const std::string& line : lines)
        text += line;
    Put(text, 1 + lines.size());
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
    const std::string block = std::exchange(mBlock, {});
    const std::size_t lines = std::exchange(mBlockLines, 0);
    if (!mFiles.IsOpen() || !mFiles.Write(block))
        mLost += lines;
}

}  // namespace Recording
