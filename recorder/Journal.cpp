#include "recorder/Journal.h"

#include "recorder/UnknownObjects.h"

#include <algorithm>
#include <utility>

namespace Recording {
namespace {

/// How many threads are remembered that are in no input.
constexpr std::size_t kMostThreads = 256;

/// How long an input that is not finished holds back those behind it: a dispatcher may show a dialog.
constexpr std::uint64_t kPatience = 500000;

}  // namespace

void Troubles::TellText(const char* kind, const std::string& text)
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (!mTold.insert(kind).second)
            return;
    }
    if (mListener)
        mListener(text);
}

Journal::Journal(std::size_t bufferBytes, Troubles& troubles)
    : mBufferBytes(bufferBytes),
      mTroubles(troubles),
      mWriter(Session::ValueWriter(Session::Style::kSession, UnknownObjects::Get()))
{
}

std::uint64_t Journal::Now() const noexcept
{
    const auto passed = std::chrono::steady_clock::now() - mStart;
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(passed).count());
}

void Journal::Lose(Input& input) noexcept
{
    input.isLost = true;
    input.text.Take();
    std::vector<Answer>().swap(input.answers);
    std::vector<std::string>().swap(input.browserIDs);
    std::vector<ferrite::utility::Guid>().swap(input.guids);
    std::vector<Thrown>().swap(input.thrown);
    std::vector<std::size_t>().swap(input.posts);
}

void Journal::EndLine(Input& input)
{
    input.text.EndLine();
    if (BytesOf(input) > mBufferBytes)
        Lose(input);
}

void Journal::Note(const std::string& text) noexcept
{
    const auto write = [&](Input& input) {
        if (!input.isLost)
            Guard(&input, [&] {
                input.text.Bare("# " + text);
                EndLine(input);
            });
    };
    if (Input* const running = Innermost()) {
        write(*running);
    } else if (const InputPtr note = Open(Input::Type::kNote)) {
        write(*note);
        End(note);
    }
}

void Journal::AddAnswer(Input& input, Answer answer)
{
    input.answerBytes += sizeof answer + answer.question.size() + answer.answer.size();
    input.answers.push_back(std::move(answer));
    if (BytesOf(input) > mBufferBytes)
        Lose(input);
}

void Journal::JoinLost()
{
    const auto changes = [](const Change& change) {
        return change.created || change.destroyed || change.hasDispatcher || change.registered;
    };
    std::size_t kept = 0;
    for (InputPtr& each : mOrdered) {
        const Input& input = *each;
        Input* const before = kept == 0 ? nullptr : mOrdered[kept - 1].get();
        if (before != nullptr && before->isFinished && before->isLost && input.isFinished && input.isLost &&
            !changes(input.change)) {
            before->lines += input.lines;
            before->missed += input.missed;
            before->missedEnds |= input.missedEnds;
            if (input.change.readsFromDisk)
                before->change.readsFromDisk = input.change.readsFromDisk;
        } else {
            std::swap(mOrdered[kept++], each);
        }
    }
    mOrdered.resize(kept);
    mJoinAt = std::max(kFewInputs, 2 * kept);
}

Journal::Thread& Journal::ThisThread()
{
    const auto [found, isNew] = mThreads.try_emplace(std::this_thread::get_id());
    if (!isNew)
        return found->second;
    found->second.number = ++mThreadCount;
    if (mThreads.size() > kMostThreads)
        for (auto each = mThreads.begin(); each != mThreads.end();)
            each = each == found || !each->second.open.empty() ? std::next(each) : mThreads.erase(each);
    return found->second;
}

Journal::InputPtr Journal::Open(Input::Type type) noexcept
{
    try {
        auto input = std::make_shared<Input>();
        input->type = type;
        input->begun = Now();
        const std::lock_guard<std::mutex> lock(mMutex);
        Thread& thread = ThisThread();
        if (!thread.open.empty() && thread.open.back()->isSeries)
            CutSeries(thread);
        if (mOrdered.size() >= mJoinAt)
            JoinLost();
        input->thread = thread.number;
        input->isLost = mBytes > mBufferBytes - mBufferBytes / 8;  // no work for what is lost anyway
        const auto running = std::count_if(thread.open.begin(), thread.open.end(),
                                           [](const InputPtr& each) { return each->isRunning; });
        input->isNested = running != 0;
        input->overlaps = mRunning - static_cast<int>(running);
        thread.open.push_back(input);
        try {
            mOrdered.push_back(input);
        } catch (...) {
            thread.open.pop_back();
            throw;
        }
        input->isRunning = true;
        ++mRunning;
        return input;
    } catch (...) {
        Miss(0);
        mTroubles.Tell("memory", "the recorder has no memory: what happens is not recorded");
        return nullptr;
    }
}

void Journal::Miss(unsigned ends) noexcept
{
    try {
        const std::lock_guard<std::mutex> lock(mMutex);
        Input& before = mOrdered.empty() ? mMissed : *mOrdered.back();
        ++before.missed;
        before.missedEnds |= ends;
    } catch (...) {  // a lock that fails
    }
}

void Journal::MissEnd(Kind kind) noexcept
{
    Miss(1U << kind);
}

Input* Journal::Innermost() noexcept
{
    try {
        const std::lock_guard<std::mutex> lock(mMutex);
        const auto found = mThreads.find(std::this_thread::get_id());
        if (found == mThreads.end())
            return nullptr;
        auto& open = found->second.open;
        const auto running =
            std::find_if(open.rbegin(), open.rend(), [](const InputPtr& each) { return each->isRunning; });
        return running == open.rend() ? nullptr : running->get();
    } catch (...) {
        return nullptr;
    }
}

void Journal::Forget(Thread& thread, const InputPtr& input)
{
    const auto found = std::find(thread.open.begin(), thread.open.end(), input);
    if (found != thread.open.end())
        thread.open.erase(found);
}

void Journal::CutSeries(Thread& thread)
{
    const InputPtr series = thread.open.back();
    thread.open.pop_back();
    series->type = Input::Type::kOutside;
    series->isRunning = false;
    --mRunning;
    Finish(series);
}

void Journal::Finish(const InputPtr& input)
{
    const std::size_t bytes = BytesOf(*input);
    if (mBytes + bytes > mBufferBytes)
        Lose(*input);
    else
        mBytes += bytes;
    input->isFinished = true;
    if (mBytes > mBufferBytes / 2)
        mForWriter.notify_one();
}

void Journal::EndByException(const InputPtr& input) noexcept
{
    if (input == nullptr)
        return;
    Guard(input.get(), [&] {
        const std::string what = Session::TextOfCurrentException();
        Effect(*input, [&](Session::JsonText& out) { mWriter.Exception(out, what); });
    });
    input->endedByException = true;
    End(input);
}

void Journal::EndDelivery(const InputPtr& input, std::size_t expected) noexcept
{
    if (input == nullptr)
        return;
    try {
        const std::lock_guard<std::mutex> lock(mMutex);
        input->isRunning = false;
        input->stopped = Now();
        input->request = nullptr;
        --mRunning;
        std::size_t reached = 0;
        for (unsigned kinds = input->kindsReached; kinds != 0; kinds >>= 1U)
            reached += kinds & 1U;
        if (reached < expected)
            return;  // the message may reach another connector
        Forget(ThisThread(), input);
        Finish(input);
    } catch (...) {  // a lock that fails
    }
}

Journal::InputPtr Journal::Rejoin(Kind kind, const Kiln::Message& message,
                                  const std::string& station) noexcept
{
    try {
        const std::lock_guard<std::mutex> lock(mMutex);
        Thread& thread = ThisThread();
        while (!thread.open.empty() && !thread.open.back()->isRunning) {
            InputPtr last = thread.open.back();
            if (last->message == &message && last->station == station &&
                (last->kindsReached & 1U << kind) == 0) {
                last->kindsReached |= 1U << kind;
                last->isRunning = true;
                ++mRunning;
                return last;
            }
            thread.open.pop_back();
            Finish(last);
        }
    } catch (...) {  // a lock that fails
    }
    return nullptr;
}

std::vector<Journal::InputPtr> Journal::Take(std::chrono::milliseconds patience, Input& missed)
{
    std::unique_lock<std::mutex> lock(mMutex);
    mForWriter.wait_for(lock, patience,
                        [this] { return mStopped || mRounds < mRoundsWanted || mBytes > mBufferBytes / 2; });
    const bool isFlushing = mRounds < mRoundsWanted;
    const std::uint64_t now = Now();
    std::vector<InputPtr> ready;
    std::deque<InputPtr> left;
    bool isHeldBack = false;
    for (const InputPtr& input : mOrdered) {
        // Nobody else got the message meanwhile.
        if (!input->isFinished && !input->isRunning && (mStopped || now - input->stopped > kPatience)) {
            for (auto& [id, thread] : mThreads)
                Forget(thread, input);
            Finish(input);
        }
        if (!input->isFinished) {
            left.push_back(input);
            isHeldBack = isHeldBack || now - std::max(input->begun, input->stopped) < kPatience;
        } else if (isHeldBack && !mStopped && !isFlushing && mBytes < mBufferBytes / 2) {
            left.push_back(input);
        } else {
            for (const InputPtr& before : left)
                before->isPassedOver = !before->isFinished;
            ready.push_back(input);
        }
    }
    mOrdered.swap(left);
    missed = std::exchange(mMissed, {});
    mTaken = 0;
    for (const InputPtr& input : ready)
        mTaken += BytesOf(*input);
    mWriting = true;
    return ready;
}

void Journal::Written()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mBytes -= std::min(mBytes, mTaken);
    mTaken = 0;
    mWriting = false;
    ++mRounds;
    mForFlush.notify_all();
}

bool Journal::IsStopped() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mStopped;
}

void Journal::Stop()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mStopped = true;
    mForWriter.notify_one();
}

void Journal::Flush()
{
    std::unique_lock<std::mutex> lock(mMutex);
    // What the writer has taken already may lack what was finished since.
    const std::uint64_t wanted = mRounds + (mWriting ? 2 : 1);
    mRoundsWanted = std::max(mRoundsWanted, wanted);
    mForWriter.notify_one();
    mForFlush.wait(lock, [this, wanted] { return mRounds >= wanted || mStopped; });
}

}  // namespace Recording
