#include "reference_host/PanelEvents.h"

#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"

#include <algorithm>
#include <utility>

namespace ReferenceHost {

void PanelEvents::AddTandemEventListener(const UTF16String& type, void* /*callback*/)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mRegistered.insert(type);
}

void PanelEvents::RemoveTandemEventListener(const UTF16String& type, void* /*callback*/)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mRegistered.erase(type);
}

void PanelEvents::DispatchApplicationEvent(const std::string& type, const std::string& data)
{
    std::vector<boost::shared_ptr<Panel>> panels;
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        panels = mPanels;
    }
    for (const auto& panel : panels)
        panel->OnNotification(type, data);
}

std::string PanelEvents::GetBrowserID()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mBrowserID;
}

void PanelEvents::SetBrowserID(std::string browserID)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mBrowserID = std::move(browserID);
}

bool PanelEvents::Raise(const UTF16String& type, const UTF16String& data)
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (mRegistered.count(type) == 0)
            return false;
    }
    mStations.BroadcastMessage(Ridge::GetPlexaStationID(), Ridge::TandemEvent(type, data));
    return true;
}

void PanelEvents::Attach(boost::shared_ptr<Panel> panel)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mPanels.push_back(std::move(panel));
}

void PanelEvents::Detach(const Panel& panel)
{
    boost::shared_ptr<Panel> detached;  // Outlives the lock: the panel may be destroyed here.
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto found = std::find_if(mPanels.begin(), mPanels.end(),
                                    [&panel](const auto& attached) { return attached.get() == &panel; });
    if (found == mPanels.end())
        return;
    detached.swap(*found);
    mPanels.erase(found);
}

}  // namespace ReferenceHost
