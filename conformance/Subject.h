#pragma once

#include "assetconnector/host/Host.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/host/kiln/InterfaceRef.h"

#include <boost/function.hpp>

#include <string>

namespace Conformance {

/// Takes what reaches a panel: identifier and XML text, UTF-8.
using PanelFunction = boost::function<void(const std::string& type, const std::string& data)>;

/// Takes what the user is told of an error. Any thread; also later than the call that reports it.
using ReportFunction = boost::function<void(const UTF16String& text, const UTF16String& detail)>;

/// The host that is checked: its table of services, and what checks need beyond it. Each function may be left
/// empty; the checks that need it are then not checked.
///
/// What is not said otherwise is called on the thread that runs the checks, outside of deliveries. What a
/// function throws fails the check.
struct Subject
{
    explicit Subject(const AC::HostServices& inServices) : services(inServices) {}

    AC::HostServices services;

    /// Does what happens when a page raises an event. Also called on the thread that delivers posted
    /// messages, and from inside the delivery of another event. What a listener throws may come back to the
    /// caller.
    boost::function<void(const UTF16String& type, const UTF16String& data)> raisePanelEvent;

    /// Returns when everything that was posted before is delivered: waits for the user-interface thread or,
    /// where the checks run on it, delivers. What a listener throws may come back to the caller. Also called
    /// at the end of a run.
    boost::function<void()> waitForUserInterface;

    /// Opens a panel that gives the function each notification, in place of the one before; an empty function
    /// closes it. When it returns, the one before has come back and is not called any more. What the function
    /// throws is what a panel throws.
    boost::function<void(const PanelFunction& panel)> setPanel;

    /// Gives each error report to the function, too; an empty one ends that.
    boost::function<void(const ReportFunction& report)> setReport;

    /// Closes the project, or opens it again. One is open before the checks.
    boost::function<void(bool open)> openProject;

    /// From now on the packet is the XMP of the path.
    boost::function<void(const UTF16String& mediaPath, const std::string& packet)> setCachedXMP;

    /// Whether the memory service has no memory from now on.
    boost::function<void(bool exhausted)> exhaustMemory;

    /// \return A marker of the host that has a property XML.
    boost::function<Kiln::InterfaceRef<Keel::IMarker>()> makeMarker;

    /// Drops the station messages that are still posted, at the end; returns when the delivery under way is
    /// over and its message destroyed. Must not throw.
    boost::function<void()> dropPosted;
};

}  // namespace Conformance
