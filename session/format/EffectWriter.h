#pragma once

#include "session/format/StationMessageClasses.h"

namespace Session {

/// Writes what the library does, as the members of an effect's object, which the caller opens and closes. Any
/// thread.
class EffectWriter
{
public:
    explicit EffectWriter(const ValueWriter& values) : mValues(values) {}

    const ValueWriter& Values() const noexcept { return mValues; }

    template <class... Arguments>
    void DispatcherCall(JsonText& out, const char* operation, const Arguments&... arguments) const
    {
        Call(out, "dispatcher", operation, arguments...);
    }

    /// \param arguments Those that the effect shows.
    template <class... Arguments>
    void HostCall(JsonText& out, const char* operation, const Arguments&... arguments) const
    {
        Call(out, "hostCall", operation, arguments...);
    }

    void Notification(JsonText& out, const std::string& identifier, const std::string& data) const
    {
        Member(out, "notification", identifier);
        Member(out, "data", data);
    }

    /// \param message Of that class.
    void Post(JsonText& out, const StationMessageClass& row, const ferrite::utility::ImmutableString& station,
              const Kiln::Message& message, bool flag) const
    {
        BeginMessage(out, "post", row, station);
        Member(out, "flag", flag);
        EndMessage(out, row, message);
    }
    void Delivery(JsonText& out, const StationMessageClass& row,
                  const ferrite::utility::ImmutableString& station, const Kiln::Message& message) const
    {
        BeginMessage(out, "deliver", row, station);
        EndMessage(out, row, message);
    }

    void Destroyed(JsonText& out, std::string_view connector) const
    {
        out.Name("destroyed");
        out.String(connector);
    }

    /// \param what As TextOfCurrentException has it.
    void Exception(JsonText& out, const std::string& what) const { Member(out, "exception", what); }

private:
    template <class Value>
    void Member(JsonText& out, std::string_view name, const Value& value) const
    {
        out.Name(name);
        mValues.Write(value, out);
    }

    template <class... Arguments>
    void Call(JsonText& out, std::string_view kind, std::string_view operation,
              const Arguments&... arguments) const
    {
        out.Name(kind);
        out.String(operation);
        out.Name("args");
        mValues.WriteArguments(out, arguments...);
    }

    void BeginMessage(JsonText& out, std::string_view kind, const StationMessageClass& row,
                      const ferrite::utility::ImmutableString& station) const
    {
        out.Name(kind);
        out.String(row.name);
        Member(out, "station", station);
    }
    void EndMessage(JsonText& out, const StationMessageClass& row, const Kiln::Message& message) const
    {
        out.Name("payload");
        row.writePayload(mValues, message, out);
    }

    ValueWriter mValues;
};

/// \return What a session says of the exception that is being handled: its what(), for the DOM's its message.
std::string TextOfCurrentException();

}  // namespace Session
