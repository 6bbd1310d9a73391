#pragma once

#include "assetconnector/host/ferrite/ImmutableString.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/Message.h"
#include "assetconnector/host/ridge/IIngestLibrary.h"
#include "session/Operations.h"
#include "session/ValueWriter.h"

#include <boost/function.hpp>

#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace Session {

/// Takes down what the library does, as effects in session format, in the order in which it happens, and lets
/// operations throw. The hook of the host's forwarders. One thread.
class Recorder
{
public:
    using Sink = boost::function<void(OrderedJson& effect)>;

    /// \param sink Gets each effect as it happens, and may take it; empty: nobody is interested.
    explicit Recorder(Style style, Sink sink = {}) : mWriter(style), mSink(std::move(sink)) {}

    const ValueWriter& Writer() const { return mWriter; }

    /// \param operations From now on these throw, and no others.
    void SetThrowing(std::set<std::string> operations) { mThrowing = std::move(operations); }

    /// \param hostCalls From now on these give no effect, and no others.
    void SetQuiet(std::set<std::string> hostCalls) { mQuiet = std::move(hostCalls); }

    /// The connector that ends next is this one, and its end is an effect.
    void ExpectEnd(std::string_view connector) { mEnding = connector; }

    void RecordException(const std::string& what);

    /// Any operation of the host.
    template <class... Arguments>
    void operator()(const char* operation, const Arguments&... arguments)
    {
        const Operation* const row = FindHostOperation(operation);
        if (row == nullptr)
            return;
        if (row->isHostCall && mQuiet.count(operation) == 0)
            Record({{"hostCall", operation}, {"args", mWriter.WriteArguments(arguments...)}});
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

    /// The dispatcher's hook.
    class DispatcherHook
    {
    public:
        explicit DispatcherHook(Recorder& recorder) : mRecorder(recorder) {}

        template <class... Arguments>
        void operator()(const char* operation, const Arguments&... arguments)
        {
            mRecorder.Record(
                {{"dispatcher", operation}, {"args", mRecorder.mWriter.WriteArguments(arguments...)}});
            mRecorder.ThrowIfAsked(operation);
        }

    private:
        Recorder& mRecorder;
    };

private:
    void Record(OrderedJson effect);

    /// \throws std::runtime_error
    void ThrowIfAsked(const char* operation) const;

    ValueWriter mWriter;
    Sink mSink;
    std::set<std::string> mThrowing;
    std::set<std::string> mQuiet;
    std::string_view mEnding;
};

}  // namespace Session
