#pragma once

#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/plexa/IPanelEvents.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"

#include <mutex>
#include <ostream>
#include <set>
#include <string>

/// The bridge to the HTML panels. Here a panel is a stream. Called on any thread, as its interface says.
class Panels : public Plexa::IPanelEvents
{
public:
    explicit Panels(std::ostream& out) : mOut(out) {}

    void AddTandemEventListener(const UTF16String& type, void* /*callback*/) override
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mTypes.insert(type);
    }

    void RemoveTandemEventListener(const UTF16String& type, void* /*callback*/) override
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mTypes.erase(type);
    }

    void DispatchApplicationEvent(const std::string& type, const std::string& data) override
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mOut << "to the panel: " << type << "\n  " << data << "\n";
    }

    std::string GetBrowserID() override { return "panel-1"; }

    /// What the host's browser calls when the page raises an event. No lock is held while listeners run,
    /// which may raise and send.
    void Raise(const UTF16String& type, const UTF16String& data)
    {
        if (IsRegistered(type))
            Kiln::StationUtils::BroadcastMessage(Ridge::GetPlexaStationID(), Ridge::TandemEvent(type, data));
    }

private:
    bool IsRegistered(const UTF16String& type)
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        return mTypes.count(type) != 0;
    }

    std::ostream& mOut;
    std::mutex mMutex;
    std::set<UTF16String> mTypes;
};
