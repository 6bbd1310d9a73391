#include "session/Recorder.h"

#include <stdexcept>

namespace Session {

using ferrite::utility::ImmutableString;

void Recorder::Record(OrderedJson effect)
{
    if (mSink)
        mSink(effect);
}

void Recorder::ThrowIfAsked(const char* operation) const
{
    if (mThrowing.count(operation) != 0)
        throw std::runtime_error(std::string(operation) + " failed");
}

void Recorder::RecordException(const std::string& what)
{
    Record({{"exception", mWriter.Write(what)}});
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
        Record({{"destroyed", std::exchange(mEnding, {})}});
}

void Recorder::operator()(const char* operation, const std::string& notification, const std::string& data)
{
    Record({{"notification", mWriter.Write(notification)}, {"data", mWriter.Write(data)}});
    ThrowIfAsked(operation);
}

void Recorder::operator()(const char* operation, const ImmutableString& station, const Kiln::Message& message,
                          const bool& flag)
{
    if (const StationMessageClass* const row = FindStationMessageClass(message))
        Record({{"post", row->name},
                {"station", mWriter.Write(station)},
                {"flag", flag},
                {"payload", row->payload(mWriter, message)}});
    ThrowIfAsked(operation);
}

void Recorder::operator()(const char* /*operation*/, const ImmutableString& station,
                          const Kiln::Message& message)
{
    if (const StationMessageClass* const row = FindStationMessageClass(message))
        Record({{"deliver", row->name},
                {"station", mWriter.Write(station)},
                {"payload", row->payload(mWriter, message)}});
}

}  // namespace Session
