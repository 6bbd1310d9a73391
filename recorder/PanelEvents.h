#pragma once

#include "recorder/Stations.h"
#include "reference_host/Forwarders.h"

#include <map>
#include <set>

namespace Recording {

/// Stands in front of the host's panel events, and knows AC::AddTandemEvents and AC::RemoveTandemEvents by
/// what they call: every request of the catalogue, in its order, outside of any input.
class PanelEvents final : public ReferenceHost::ForwardingPanelEvents<Hook>
{
public:
    /// \param stations Told whether all requests are registered.
    PanelEvents(Plexa::IPanelEvents& next, Hook& hook, Stations& stations);

    void AddTandemEventListener(const UTF16String& type, void* callback) override;
    void RemoveTandemEventListener(const UTF16String& type, void* callback) override;

private:
    /// What has been registered, or withdrawn, on one thread so far.
    struct Series
    {
        Journal::InputPtr input;
        bool adds = false;
        std::size_t next = 0;  ///< In the catalogue.
    };

    /// Begins or goes on with a series. \return Its input when this call is part of one.
    Journal::InputPtr Join(bool adds, const UTF16String& type);
    void Leave(const Journal::InputPtr& series, bool isThrown);

    template <class Call>
    void Register(bool adds, const UTF16String& type, Call call);
    void Changed(bool added, const UTF16String& type, Input* input);

    Stations& mStations;
    std::mutex mMutex;
    std::map<std::thread::id, Series> mSeries;
    std::set<UTF16String> mRegistered;  ///< Of the catalogue.
};

}  // namespace Recording
