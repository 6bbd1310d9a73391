#pragma once

#include "desk/Origin.h"
#include "reference_host/PanelEvents.h"
#include "session/format/Json.h"

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <optional>
#include <string>
#include <vector>

namespace Desk {

/// A session that is played, paced by hand. What is called when nothing waits for it does nothing.
class Playback
{
public:
    virtual ~Playback() = default;

    /// Plays the next line.
    virtual void Step() = 0;

    /// Raises the request that is waited for with the session's own text.
    virtual void RaiseIt() = 0;

    /// \param speed How many times as fast, above 0. \param isStepping Whether each line waits for Step. What
    /// is left out stays.
    virtual void SetPace(std::optional<double> speed, std::optional<bool> isStepping) = 0;
};

/// An installed host with its connectors, as pages meet it. Made, used and destroyed on one thread.
class Host
{
public:
    virtual ~Host() = default;
    Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// \param panel Gets every notification. Not null.
    virtual void Attach(boost::shared_ptr<ReferenceHost::Panel> panel) = 0;

    /// \return The identifiers of the requests that the host handles beside the connectors.
    virtual const std::vector<std::string>& Handles() const = 0;

    /// A panel has come.
    virtual void OnPanel() {}

    /// Runs an action that asks the host for what no session told it. What it throws comes out.
    virtual void Aside(const boost::function<void()>& action) { action(); }

    /// A panel raises a request. \param type Its identifier. \param xml Its text; both UTF-8, not checked.
    /// \throws What handling it throws; the rest of the request is dropped.
    virtual void Raise(const Origin& asker, const std::string& type, const std::string& xml) = 0;

    /// Delivers the station messages that are posted. \return Whether there were any: they may have posted
    /// more. \throws What a listener throws: that message is done with, those behind it stay.
    virtual bool DeliverPosted() = 0;

    /// Makes a callback by hand. \param name Such as "OnTransferStatus". \param arguments As session files
    /// have them. \param to The connector that is called; without it as the host itself would.
    /// \throws Session::FormatError for what is no callback, connector or argument; what the callback throws.
    virtual void Callback(const std::string& name, const Session::Json& arguments,
                          std::optional<PanelKind> to) = 0;

    /// Tells panels what no connector does. \param identifier Of a notification. \param xml UTF-8.
    virtual void Tell(const std::string& identifier, const std::string& xml) = 0;

    /// Puts a mark into the recording. \see Marks::Put
    virtual void Mark(const char* member, const std::string& mark) = 0;

    /// Waits until everything that has passed is in the recording.
    virtual void FlushRecording() = 0;

    /// \return What of the host pages are told beside tasks and panels: members of the frame "state".
    virtual Session::Json State() const = 0;

    /// \return By what to pace it, where the host plays a session; else null.
    virtual Playback* GetPlayback() { return nullptr; }
};

}  // namespace Desk
