#include "session/Recorder.h"

#include <stdexcept>

namespace Session {

using ferrite::utility::ImmutableString;

void Recorder::ThrowIfAsked(const char* operation)
{
    if (mMuted)
        return;
    auto due = mThrows.end();
    for (auto each = mThrows.begin(); each != mThrows.end(); ++each)
        if (each->operation == operation && --each->call == 0)
            due = each;
    if (due != mThrows.end()) {
        const std::string what = std::move(due->what);
        mThrows.erase(due);
        throw std::runtime_error(what);
    }
    if (mThrowing.count(operation) != 0)
        throw std::runtime_error(std::string(operation) + " failed");
}

void Recorder::RecordException(const std::string& what)
{
    Record([&](JsonText& out) { mWriter.Exception(out, what); });
}

void Recorder::operator()(const char* operation, const UTF16String& mediaPath,
                          const Ridge::XMPText& /*holder*/, const UTF16String& /*scratch*/)
{
    (*this)(operation, mediaPath);
}

void Recorder::operator()(const char* operation, const Ridge::MediaInfoArguments& /*arguments*/)
{
    (*this)(operation);
}

void Recorder::operator()(const char* operation, const ImmutableString& station,
                          const Kiln::Listener& /*listener*/)
{
    (*this)(operation, station);
}

void Recorder::operator()(const char* /*operation*/, const Kiln::Listener& /*listener*/) noexcept
{
    // The base class of the connector ends the subscriptions once more.
    if (!mEnding.empty())
        Record([&](JsonText& out) { mWriter.Destroyed(out, std::exchange(mEnding, {})); });
}

void Recorder::operator()(const char* operation, const std::string& notification, const std::string& data)
{
    Record([&](JsonText& out) { mWriter.Notification(out, notification, data); });
    ThrowIfAsked(operation);
}

void Recorder::operator()(const char* operation, const ImmutableString& station, const Kiln::Message& message,
                          const bool& flag)
{
    if (const StationMessageClass* const row = FindStationMessageClass(message))
        Record([&](JsonText& out) { mWriter.Post(out, *row, station, message, flag); });
    ThrowIfAsked(operation);
}

void Recorder::operator()(const char* /*operation*/, const ImmutableString& station,
                          const Kiln::Message& message)
{
    if (const StationMessageClass* const row = FindStationMessageClass(message))
        Record([&](JsonText& out) { mWriter.Delivery(out, *row, station, message); });
}

}  // namespace Session
