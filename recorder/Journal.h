#pragma once

#include "assetconnector/host/kiln/Message.h"
#include "recorder/Input.h"
#include "session/format/EffectWriter.h"

#include <boost/function.hpp>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Recording {

/// Troubles, each told once.
class Troubles
{
public:
    explicit Troubles(boost::function<void(const std::string&)> listener) : mListener(std::move(listener)) {}

    /// \param kind By which it is known. \param parts Of the text.
    template <class... Parts>
    void Tell(const char* kind, const Parts&... parts) noexcept
    {
        try {
            std::string text;
            ((text += parts), ...);
            TellText(kind, text);
        } catch (...) {  // the host's listener, or no memory: nobody is left to tell
        }
    }

private:
    void TellText(const char* kind, const std::string& text);

    boost::function<void(const std::string&)> mListener;
    std::mutex mMutex;
    std::set<std::string> mTold;
};

/// The inputs that are under way, and those that are finished and wait for the writer. Every function may be
/// called on any thread; none throws: what cannot be taken down is lost, and counted.
class Journal
{
public:
    using InputPtr = std::shared_ptr<Input>;

    Journal(std::size_t bufferBytes, Troubles& troubles);

    const Session::EffectWriter& Writer() const noexcept { return mWriter; }

    /// Begins an input on this thread. \param writeMembers Writes the members of its line.
    /// \return Null when it cannot be taken down.
    template <class WriteMembers>
    InputPtr Begin(WriteMembers writeMembers) noexcept
    {
        const InputPtr input = Open();
        Write(input, writeMembers);
        return input;
    }

    /// Ends an input of this thread.
    void End(const InputPtr& input) noexcept { EndDelivery(input, 0); }
    /// The same by the exception that is being handled.
    void EndByException(const InputPtr& input) noexcept;

    /// A message reaches a connector; one message that reaches both is one input.
    template <class WriteMembers>
    InputPtr BeginDelivery(Kind kind, const Kiln::Message& message, const std::string& station,
                           WriteMembers writeMembers) noexcept
    {
        if (InputPtr again = Rejoin(kind, message, station))
            return again;
        InputPtr input = Begin(writeMembers);
        if (input != nullptr)
            Guard(input.get(), [&] {
                input->kindsReached = 1U << kind;
                input->station = station;
                input->message = &message;
            });
        return input;
    }
    /// \param expected How many connectors get the message.
    void EndDelivery(const InputPtr& input, std::size_t expected) noexcept;

    /// \return The innermost running input of this thread, which this thread may change; null without one.
    Input* Innermost() noexcept;

    /// Adds an effect. \param input Of this thread.
    template <class WriteMembers>
    void Effect(Input& input, WriteMembers writeMembers) noexcept
    {
        Write(input, writeMembers);
    }

    /// Adds what the host answered. \param input Of this thread. \throws std::bad_alloc
    void AddAnswer(Input& input, Answer answer);

    /// A line that stands for itself. \param writeMembers Gets the input, too.
    template <class WriteMembers>
    void Add(Input::Type type, WriteMembers writeMembers) noexcept
    {
        const InputPtr input = Open(type);
        const auto write = [&](Session::JsonText& out) { writeMembers(*input, out); };
        Write(input, write);
        End(input);
    }

    /// A change without a line.
    void AddChange(const Change& change) noexcept
    {
        if (const InputPtr input = Open(Input::Type::kState)) {
            input->change = change;
            End(input);
        }
    }

    /// A comment, in the innermost running input of this thread or on its own. \param text One line.
    void Note(const std::string& text) noexcept;

    /// The connector ended, and no input could be begun for it.
    void MissEnd(Kind kind) noexcept;

    /// Runs what must not harm the host; when it throws, the input is lost.
    template <class Action>
    void Guard(Input* input, Action action) noexcept
    {
        try {
            action();
        } catch (...) {
            if (input != nullptr)
                Lose(*input);
        }
    }

    /// For the writer: waits up to the time for something to write, or until it is asked to stop or to flush.
    /// \param missed Tells of those for which there was no memory and that began before all others.
    /// \return What can be written, in order.
    std::vector<InputPtr> Take(std::chrono::milliseconds patience, Input& missed);
    /// The writer is done with what it took.
    void Written();
    /// \return Whether the writer is to end; all is finished then.
    bool IsStopped() const;

    void Stop();
    /// Waits until everything finished is written.
    void Flush();

private:
    struct Thread
    {
        int number = 0;
        std::vector<InputPtr> open;  ///< Innermost last.
    };

    InputPtr Open(Input::Type type = Input::Type::kInput) noexcept;
    InputPtr Rejoin(Kind kind, const Kiln::Message& message, const std::string& station) noexcept;

    template <class WriteMembers>
    void Write(const InputPtr& input, WriteMembers& writeMembers) noexcept
    {
        if (input != nullptr)
            Write(*input, writeMembers);
    }
    template <class WriteMembers>
    void Write(Input& input, WriteMembers& writeMembers) noexcept
    {
        ++input.lines;
        if (input.isLost)
            return;
        Guard(&input, [&] {
            input.text.BeginObject();
            writeMembers(input.text);
            input.text.Name("us");
            input.text.Number(Now());
            input.text.Name("thread");
            input.text.Number(input.thread);
            input.text.EndObject();
            EndLine(input);
        });
    }
    void EndLine(Input& input);

    void Miss(unsigned ends) noexcept;
    static void Lose(Input& input) noexcept;
    /// \return What it holds of the buffer.
    static std::size_t BytesOf(const Input& input) noexcept
    {
        return input.isLost ? 0 : sizeof input + input.text.Text().size() + input.answerBytes;
    }
    /// Lets lost inputs that stand side by side be one: what is not written must not pile up.
    void JoinLost();
    std::uint64_t Now() const noexcept;
    Thread& ThisThread();
    void Forget(Thread& thread, const InputPtr& input);
    void Finish(const InputPtr& input);
    /// The last registrations on the thread were not those of AC::AddTandemEvents.
    void CutSeries(Thread& thread);

    const std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
    const std::size_t mBufferBytes;
    Troubles& mTroubles;
    const Session::EffectWriter mWriter;

    mutable std::mutex mMutex;
    std::condition_variable mForWriter;
    std::condition_variable mForFlush;
    std::unordered_map<std::thread::id, Thread> mThreads;
    int mThreadCount = 0;
    int mRunning = 0;                  ///< Inputs on all threads.
    std::deque<InputPtr> mOrdered;     ///< All that are not written, in the order in which they began.
    Input mMissed;                     ///< As Take has it.
    std::size_t mBytes = 0;            ///< Of what is finished.
    std::size_t mTaken = 0;            ///< Of what the writer has.
    std::size_t mJoinAt = kFewInputs;  ///< When the lost ones are joined next.
    bool mWriting = false;
    bool mStopped = false;
    std::uint64_t mRounds = 0;        ///< How often the writer was done.
    std::uint64_t mRoundsWanted = 0;  ///< Somebody waits for so many.

    static constexpr std::size_t kFewInputs = 4096;
};

}  // namespace Recording
