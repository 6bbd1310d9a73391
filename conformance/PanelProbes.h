#pragma once

#include "conformance/Probes.h"

/// What checks with panels share.
namespace Conformance {

/// \return The type of an event that nothing else knows.
UTF16String UniqueType();

/// A type is registered for as long as this object lives.
class Registration
{
public:
    explicit Registration(const UTF16String& type);
    ~Registration();
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

private:
    const UTF16String mType;
};

/// A page that raises events, and the data of those that reach the panel services station.
class Panel
{
public:
    /// Ends the check when the subject cannot raise events.
    explicit Panel(const Context& context);

    /// Raises an event; drops what listeners of the check throw, whose way ends where the host delivers.
    void Raise(const UTF16String& type, const UTF16String& data) const;

    const Log& GetLog() const noexcept { return mLog; }

    /// As the free function ExpectLog.
    void ExpectRaised(Context& context, const std::string& what, const std::string& last,
                      const Log::Texts& expected) const
    {
        ExpectLog(context, what, mLog, last, expected);
    }

private:
    const Subject& mSubject;
    Log mLog;
    Receiver mReceiver;
};

/// What reaches the panel, as "type data".
class Notifications
{
public:
    using Action = boost::function<void(const std::string& type)>;

    /// Ends the check when the subject has no panel.
    /// \param action What the panel does with a notification, when it is in the log.
    explicit Notifications(const Context& context, Action action = {});
    ~Notifications();
    Notifications(const Notifications&) = delete;
    Notifications& operator=(const Notifications&) = delete;

    const Log& GetLog() const noexcept { return *mLog; }

    /// Waits for as many as are expected.
    void ExpectAll(Context& context, const std::string& what, const Log::Texts& expected) const;

    /// Waits until one of that type has come. \return Whether it has.
    bool WaitFor(Context& context, const UTF16String& type) const;

private:
    const boost::function<void(const PanelFunction& panel)>& mSetPanel;
    const boost::shared_ptr<Log> mLog;  ///< Shared with the panel, which may be slow to close.
};

}  // namespace Conformance
