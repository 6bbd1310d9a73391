#pragma once

#include "assetconnector/host/ferrite/ImmutableString.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/Message.h"
#include "assetconnector/host/ridge/IIngestLibrary.h"
#include "session/Answers.h"
#include "session/Operations.h"
#include "session/SimulatedObjects.h"
#include "session/format/EffectWriter.h"
#include "session/format/Questions.h"

#include <boost/function.hpp>

#include <cstdint>
#include <list>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Session {

/// Takes down what the library does, as effects in session format, in the order in which it happens, lets
/// operations throw and answers for the host where a session says so. The hook of the host's forwarders. One
/// thread.
class Recorder
{
public:
    using Sink = boost::function<void(const std::string& effect)>;

    /// \param sink Gets each effect as it happens, as JSON on one line; empty: nobody is interested.
    explicit Recorder(Style style, Sink sink = {})
        : mWriter(SimulatedObjects::WriterFor(style)), mSink(std::move(sink))
    {
    }

    const ValueWriter& Writer() const { return mWriter.Values(); }

    /// \param operations From now on these throw, and no others.
    void SetThrowing(std::set<std::string> operations) { mThrowing = std::move(operations); }

    /// An operation throws once.
    struct Throw
    {
        std::string operation;
        std::uint32_t call;  ///< The how many-th from now on, from 1.
        std::string what;
    };
    void SetThrows(std::list<Throw> throws) { mThrows = std::move(throws); }

    void SetAnswers(Answers answers) { mAnswers = std::move(answers); }

    /// \param hostCalls From now on these give no effect, and no others.
    void SetQuiet(std::set<std::string> hostCalls) { mQuiet = std::move(hostCalls); }

    /// As long as it is muted, there are no effects, nothing is asked to throw, and no answer and no fresh
    /// GUID is used up.
    void SetMuted(bool muted) { mMuted = muted; }

    /// The connector that ends next is this one, and its end is an effect.
    void ExpectEnd(std::string_view connector) { mEnding = connector; }

    void RecordException(const std::string& what);

    /// Any operation of the host.
    template <class... Arguments>
    void operator()(const char* operation, const Arguments&... arguments)
    {
        const Operation* const row = FindHostOperation(operation);
        if (row != nullptr && row->isHostCall && mQuiet.count(operation) == 0)
            Record([&](JsonText& out) { mWriter.HostCall(out, operation, arguments...); });
        ThrowIfAsked(operation);
    }

    /// Of these the effect shows less than all arguments, or has a form of its own.
    void operator()(const char* operation, const UTF16String& mediaPath, const Ridge::XMPText& holder,
                    const UTF16String& scratch);
    void operator()(const char* operation, const Ridge::MediaInfoArguments& arguments);
    void operator()(const char* operation, const ferrite::utility::ImmutableString& station,
                    const Kiln::Listener& listener);
    void operator()(const char* operation, const Kiln::Listener& listener) noexcept;
    void operator()(const char* operation, const std::string& notification, const std::string& data);
    void operator()(const char* operation, const ferrite::utility::ImmutableString& station,
                    const Kiln::Message& message, const bool& flag);
    void operator()(const char* operation, const ferrite::utility::ImmutableString& station,
                    const Kiln::Message& message);

    /// The hook around a call that may have an answer here.
    template <class Next, class... Arguments>
    auto Around(const char* operation, const Next& next, const Arguments&... arguments)
        -> std::enable_if_t<!std::is_void_v<decltype(next())>, decltype(next())>
    {
        using Answer = decltype(next());
        if constexpr (std::is_same_v<Answer, ferrite::utility::Guid>)
            if (mMuted)
                return {};
        (*this)(operation, arguments...);
        const Json* const answer = mMuted || mAnswers.IsEmpty()
                                       ? nullptr
                                       : mAnswers.Next(operation, TextOfQuestion(Writer(), arguments...));
        return answer == nullptr ? next() : Take<Answer>(*answer, next, arguments...);
    }

    /// The dispatcher's hook.
    class DispatcherHook
    {
    public:
        explicit DispatcherHook(Recorder& recorder) : mRecorder(recorder) {}

        template <class... Arguments>
        void operator()(const char* operation, const Arguments&... arguments)
        {
            mRecorder.Record(
                [&](JsonText& out) { mRecorder.mWriter.DispatcherCall(out, operation, arguments...); });
            mRecorder.ThrowIfAsked(operation);
        }

    private:
        Recorder& mRecorder;
    };

private:
    template <class WriteMembers>
    void Record(WriteMembers writeMembers) const
    {
        if (!mSink || mMuted)
            return;
        JsonText effect;
        effect.BeginObject();
        writeMembers(effect);
        effect.EndObject();
        mSink(effect.Text());
    }

    /// \throws std::runtime_error
    void ThrowIfAsked(const char* operation);

    template <class Answer, class Next, class... Arguments>
    static Answer Take(const Json& answer, const Next& /*next*/, const Arguments&... /*arguments*/)
    {
        return ValueReader::Read<Answer>(answer);
    }
    template <class Answer, class Next>
    static Answer Take(const Json& answer, const Next& /*next*/, const UTF16String& /*mediaPath*/,
                       const Ridge::XMPText& holder, const UTF16String& /*scratch*/)
    {
        CachedPacket cached = ReadCachedPacket(answer);
        if (cached.packet)
            *holder = *std::move(cached.packet);
        return cached.result;
    }
    /// Of the project the answer says whether it is open.
    template <class Answer, class Next>
    static std::enable_if_t<std::is_same_v<Answer, boost::shared_ptr<Ridge::SRProject>>, Answer> Take(
        const Json& answer, const Next& next)
    {
        return ValueReader::Read<bool>(answer) ? next() : nullptr;
    }

    EffectWriter mWriter;
    Sink mSink;
    std::set<std::string> mThrowing;
    std::list<Throw> mThrows;
    Answers mAnswers;
    std::set<std::string> mQuiet;
    std::string_view mEnding;
    bool mMuted = false;
};

}  // namespace Session
