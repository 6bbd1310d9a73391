#pragma once

#include "assetconnector/message/Comparison.h"
#include "recorder/Journal.h"
#include "session/format/Questions.h"

#include <optional>
#include <string>
#include <type_traits>

namespace Recording {

/// Whether the host of a replay gives the same of itself: media infos that store what they are made of, an
/// open project. Of everything else, nobody knows.
template <class Answer, class... Arguments>
bool IsUsual(const Answer& /*answer*/, const Arguments&... /*arguments*/)
{
    return false;
}
bool IsUsual(const boost::shared_ptr<Ridge::AssetMediaInfo>& info,
             const Ridge::MediaInfoArguments& arguments);
bool IsUsual(const boost::shared_ptr<Ridge::AssetMediaInfo>& info, const ferrite::utility::Guid& guid,
             const UTF16String& mediaPath, const UTF16String& fileName, const Ridge::XMPText& xmp,
             const UTF16String& customMetadata, const UTF16String& createTime,
             const UTF16String& lastModifyTime, const UTF16String& reservedText);
inline bool IsUsual(const boost::shared_ptr<Ridge::SRProject>& project)
{
    return project != nullptr;
}
inline bool IsUsual(const bool& answer, const UTF16String& /*path*/)
{
    return !answer;
}

/// What forwarders of services and dispatchers call: takes down the call as an effect of the innermost input
/// of the thread, passes it on, and takes down what came back. Any thread. Nothing but what the host throws
/// comes out.
class Hook
{
public:
    explicit Hook(Journal& journal) : mJournal(journal) {}

    template <class Next, class... Arguments>
    auto Around(const char* operation, const Next& next, const Arguments&... arguments) -> decltype(next())
    {
        using Result = decltype(next());
        Input* const input = mJournal.Innermost();
        Count(input, operation);
        if constexpr (std::is_void_v<Result>) {
            Called(input, operation, arguments...);
            Through(input, operation, next);
        } else {
            Result result = Through(input, operation, next);
            if (input != nullptr)
                mJournal.Guard(input, [&] { Answered(*input, operation, result, arguments...); });
            return result;
        }
    }

    /// ReadXMPFromCache: an effect and an answer in one.
    template <class Next>
    Ridge::ResultCode Around(const char* operation, const Next& next, const UTF16String& mediaPath,
                             const Ridge::XMPText& holder, const UTF16String& /*scratch*/)
    {
        Input* const input = mJournal.Innermost();
        Count(input, operation);
        Called(input, operation, mediaPath);
        std::optional<std::string> before;
        if (input != nullptr)
            mJournal.Guard(input, [&] { before = *holder; });
        const Ridge::ResultCode result = Through(input, operation, next);
        if (input != nullptr)
            mJournal.Guard(
                input, [&] { CacheAnswered(*input, operation, result, mediaPath, before.value(), *holder); });
        return result;
    }

    /// Calls the dispatcher.
    template <class Next, class... Arguments>
    void AroundDispatcher(Kind kind, const char* operation, const Next& next, const Arguments&... arguments)
    {
        Input* const input = mJournal.Innermost();
        Count(input, operation);
        if (input != nullptr)
            TurnReading(*input, kind, operation);
        Effect(input, [&](Session::JsonText& out) { Writer().DispatcherCall(out, operation, arguments...); });
        Through(input, operation, next);
    }

    const Session::EffectWriter& Writer() const { return mJournal.Writer(); }

    template <class WriteMembers>
    void Effect(Input* input, WriteMembers writeMembers)
    {
        if (input != nullptr)
            mJournal.Effect(*input, writeMembers);
        else
            mJournal.Add(Input::Type::kOutside,
                         [&writeMembers](Input& /*input*/, Session::JsonText& out) { writeMembers(out); });
    }

    /// Passes a call on. \throws What the host throws, which is noted.
    template <class Next>
    auto Through(Input* input, const char* operation, const Next& next) -> decltype(next())
    {
        try {
            return next();
        } catch (...) {
            Thrown(input, operation);
            throw;
        }
    }

    void Count(Input* input, const char* operation);
    /// Without a dispatcher, a media info shows that there is something to read. \param input A request that
    /// reached the library connector.
    static void TurnToRead(Input& input);
    /// The last call of the operation ended with the exception that is being handled.
    void Thrown(Input* input, const char* operation) noexcept;

    Journal& GetJournal() const { return mJournal; }

private:
    /// Calls without a result are effects.
    template <class... Arguments>
    void Called(Input* input, const char* operation, const Arguments&... arguments)
    {
        Effect(input, [&](Session::JsonText& out) { Writer().HostCall(out, operation, arguments...); });
    }
    void Called(Input* input, const char* /*operation*/, const std::string& notification,
                const std::string& data)
    {
        if (input != nullptr && input->showsReading)
            mJournal.Guard(input, [&] { ShowReading(*input, notification); });
        Effect(input, [&](Session::JsonText& out) { Writer().Notification(out, notification, data); });
    }

    template <class Result, class... Arguments>
    void Answered(Input& input, const char* operation, const Result& result, const Arguments&... arguments)
    {
        if constexpr (std::is_same_v<Result, boost::shared_ptr<Ridge::AssetMediaInfo>>)
            input.hasMediaInfo = input.hasMediaInfo || result != nullptr;
        if (input.isLost)
            return;
        Session::JsonText answer;
        if constexpr (std::is_same_v<Result, boost::shared_ptr<Ridge::SRProject>>)
            answer.Bool(result != nullptr);
        else
            Writer().Values().Write(result, answer);
        mJournal.AddAnswer(input, {operation, Session::TextOfQuestion(Writer().Values(), arguments...),
                                   answer.Take(), IsUsual(result, arguments...)});
    }
    static void Answered(Input& input, const char* /*operation*/, const std::string& browserID)
    {
        input.browserIDs.push_back(browserID);
    }
    static void Answered(Input& input, const char* /*operation*/, const ferrite::utility::Guid& guid)
    {
        input.guids.push_back(guid);
        TurnToImport(input);
    }
    void CacheAnswered(Input& input, const char* operation, Ridge::ResultCode result,
                       const UTF16String& mediaPath, const std::string& before,
                       const std::string& after) const;

    static void ShowReading(Input& input, const std::string& notification);
    /// Of the library connector, these calls show that the request was not empty.
    static void TurnReading(Input& input, Kind kind, const char* operation);
    /// Without a dispatcher, a fresh GUID shows that there is something to import.
    static void TurnToImport(Input& input);

    Journal& mJournal;
};

/// The hook of one connector's dispatchers.
class DispatcherHook
{
public:
    DispatcherHook(Hook& hook, Kind kind) : mHook(hook), mKind(kind) {}

    template <class Next, class... Arguments>
    void Around(const char* operation, const Next& next, const Arguments&... arguments)
    {
        mHook.AroundDispatcher(mKind, operation, next, arguments...);
    }

private:
    Hook& mHook;
    const Kind mKind;
};

}  // namespace Recording
