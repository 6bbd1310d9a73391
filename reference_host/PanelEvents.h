#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/host/kiln/IStations.h"
#include "assetconnector/host/plexa/IPanelEvents.h"

#include <boost/shared_ptr.hpp>

#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace ReferenceHost {

/// A panel: receives notifications, on whatever thread the connector sends them, several at once.
class Panel
{
public:
    virtual ~Panel() = default;

    /// \param type The identifier of the notification, UTF-8. \param data Its XML text, UTF-8.
    /// What it throws reaches the caller of the connector; panels attached later do not get the
    /// notification.
    virtual void OnNotification(const std::string& type, const std::string& data) = 0;
};

/// The panel event manager with pluggable panels. Every operation may be called on any thread, from inside
/// a panel or a listener too; no lock is held while one runs.
class PanelEvents : public Plexa::IPanelEvents
{
public:
    /// \param stations Where requests of panels are broadcast. Outlives this object.
    explicit PanelEvents(Kiln::IStations& stations) : mStations(stations) {}

    /// A type registered twice is registered once: one removal ends it.
    void AddTandemEventListener(const UTF16String& type, void* callback) override;
    void RemoveTandemEventListener(const UTF16String& type, void* callback) override;

    /// Passes the notification to each panel, in the order of attachment.
    void DispatchApplicationEvent(const std::string& type, const std::string& data) override;

    /// "panel-1" until it is set.
    std::string GetBrowserID() override;
    void SetBrowserID(std::string browserID);

    /// A panel raises a request: it is broadcast as a Ridge::TandemEvent on the panel services station when
    /// its type is registered, else nothing happens.
    /// \param type The identifier of the request. \param data Its XML text.
    /// \return Whether the type is registered.
    /// \throws What a listener of the station throws.
    bool Raise(const UTF16String& type, const UTF16String& data);

    /// \param panel Not null.
    void Attach(boost::shared_ptr<Panel> panel);

    /// The panel gets nothing that is sent from now on; a notification that is being sent may still reach
    /// it. Does nothing for a panel that is not attached.
    void Detach(const Panel& panel);

private:
    Kiln::IStations& mStations;
    mutable std::mutex mMutex;
    std::set<UTF16String> mRegistered;
    std::vector<boost::shared_ptr<Panel>> mPanels;
    std::string mBrowserID = "panel-1";
};

}  // namespace ReferenceHost
