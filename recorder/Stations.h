#pragma once

#include "assetconnector/host/kiln/IStations.h"
#include "assetconnector/host/kiln/Listener.h"
#include "recorder/Hook.h"

#include <array>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Recording {

/// Stands in front of the host's stations. A connector that subscribes is subscribed by proxies, one for each
/// station, which see what reaches it; the host's own listeners are subscribed as they are.
class Stations final : public Kiln::IStations
{
public:
    /// \param next The host's, which outlives this object.
    Stations(Kiln::IStations& next, Hook& hook, Troubles& troubles);
    ~Stations() override;

    void AddListener(const ferrite::utility::ImmutableString& station, Kiln::Listener& listener) override;
    void EndSubscriptions(Kiln::Listener& listener) noexcept override;
    void BroadcastMessage(const ferrite::utility::ImmutableString& station,
                          const Kiln::Message& message) override;
    void PostMessageToUIThread(const ferrite::utility::ImmutableString& station, const Kiln::Message& message,
                               bool flag) override;

    /// From now on, until the connector is destroyed, one that subscribes on this thread is recorded as of
    /// that kind. \return False when one of the kind is recorded already.
    bool BeginConnector(Kind kind);
    /// It is made. \param made False when its factory threw.
    void EndConnector(Kind kind, bool made);

    /// \return The kind of a recorded connector; kKindCount for any other listener.
    Kind KindOfRecorded(const Kiln::Listener& listener);

    /// The requests of the whole catalogue are registered. Any thread.
    void SetRegistered(bool registered) { mRegistered = registered; }

private:
    class Proxy;
    struct Recorded
    {
        bool isMade = false;
        bool isTaken = false;  ///< Alive, or being made.
        std::thread::id maker;
        const Kiln::Listener* listener = nullptr;
        std::vector<std::shared_ptr<Proxy>> proxies;
    };

    /// \return The connector of that kind which the thread makes, and whose listener it is; null for any
    /// other.
    Recorded* Making(Kind kind, const Kiln::Listener& listener);
    std::size_t CountListeners(const std::string& station);
    void Reach(Kind kind, const std::string& station, Kiln::Listener& listener, const Kiln::Message& message);

    Kiln::IStations& mNext;
    Hook& mHook;
    Troubles& mTroubles;
    std::atomic<bool> mRegistered{false};
    std::mutex mMutex;
    std::array<Recorded, kKindCount> mRecorded;
};

}  // namespace Recording
