#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/Message.h"
#include "conformance/Check.h"

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

/// What the checks of the kit are made of.
namespace Conformance {

/// Texts in the order in which they were added. Any thread.
class Log
{
public:
    using Texts = std::vector<std::string>;

    void Add(std::string text)
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mTexts.push_back(std::move(text));
    }

    Texts Entries() const
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        return mTexts;
    }

    bool Has(const std::string& text) const;

private:
    mutable std::mutex mMutex;
    Texts mTexts;
};

/// \return The texts in an order of their own, for those that arrive in any.
Log::Texts Sorted(Log::Texts texts);

/// Is opened once. Any thread.
class Gate
{
public:
    void Open()
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mOpen = true;
        mChanged.notify_all();
    }

    /// \return Whether it is open, at the end of the limit at the latest.
    bool WaitFor(std::chrono::milliseconds limit)
    {
        std::unique_lock<std::mutex> lock(mMutex);
        return mChanged.wait_for(lock, limit, [this] { return mOpen; });
    }

private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    bool mOpen = false;
};

/// Does something at its end, and drops what that throws.
template <class Action>
class Finally
{
public:
    explicit Finally(Action action) : mAction(std::move(action)) {}
    ~Finally()
    {
        try {
            mAction();
        } catch (...) {  // the check has told what it found
        }
    }
    Finally(const Finally&) = delete;
    Finally& operator=(const Finally&) = delete;

private:
    Action mAction;
};

/// A station message with a text; counts its copies where somebody wants to know.
class Probe : public Kiln::MessageImpl<Probe>
{
public:
    AC_CONSTANT static constexpr char kTypeName[] = ".?AVProbe@Conformance@@";

    using Counter = boost::shared_ptr<std::atomic<int>>;

    explicit Probe(std::string text, Counter copies = {}) : mText(std::move(text)), mCopies(std::move(copies))
    {
    }
    Probe(const Probe& other) : Kiln::MessageImpl<Probe>(other), mText(other.mText), mCopies(other.mCopies)
    {
        if (mCopies)
            ++*mCopies;
    }
    Probe& operator=(const Probe&) = delete;
    ~Probe() override = default;

    const std::string& Text() const noexcept { return mText; }

private:
    const std::string mText;
    const Counter mCopies;
};

/// A listener that hands on the text of a probe, the data of a panel event, and what else a message is.
class Receiver final : public Kiln::Listener
{
public:
    using Handler = boost::function<void(const std::string& text)>;

    /// \param handler Runs on the thread that delivers.
    explicit Receiver(Handler handler) : mHandler(std::move(handler)) {}
    Receiver(const ferrite::utility::ImmutableString& station, Handler handler) : Receiver(std::move(handler))
    {
        Listen(station);
    }
    ~Receiver() override { EndSubscriptions(); }
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    void Listen(const ferrite::utility::ImmutableString& station);

    using Kiln::Listener::EndSubscriptions;

private:
    void OnStationMessage(const Kiln::Message& message) override;

    const Handler mHandler;
};

/// \return A handler that adds the text, with the name in front.
Receiver::Handler LoggedAs(const std::string& name, Log& log);

/// \return A handler that adds each text, and throws Thrown behind this one.
Receiver::Handler LoggedAndThrownAt(const std::string& bad, Log& log);

std::uint64_t RandomNumber();

/// \return A name that nothing else has, in other processes neither.
std::string UniqueName();

/// \return A station of that kind.
ferrite::utility::ImmutableString UniqueStation();

void Broadcast(const ferrite::utility::ImmutableString& station, const std::string& text);
void Post(const ferrite::utility::ImmutableString& station, const std::string& text, bool flag = true);

/// Waits until the log has an entry, and expects it to be as given then.
/// \param last The entry that comes last.
void ExpectLog(Context& context, const std::string& what, const Log& log, const std::string& last,
               const Log::Texts& expected);

/// Does the work on two threads at once and waits for both. \throws What the work throws.
void OnTwoThreads(const boost::function<void()>& work);

/// \return What panels may name: every separator, drive, share of a computer that cannot be, relative, not
/// normalised, and no path at all.
const std::vector<UTF16String>& OddPaths();

}  // namespace Conformance
