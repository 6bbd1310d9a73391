#pragma once

#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "reference_host/PanelEvents.h"
#include "tests/conformance/Rig.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <thread>

/// Panel events with one fault each.
namespace FaultyPanels {

using ReferenceHost::PanelEvents;

template <class Text>
Text InASCII(Text text)
{
    std::replace_if(
        text.begin(), text.end(), [](auto unit) { return (unit & ~0x7F) != 0; },
        typename Text::value_type('?'));
    return text;
}

struct AsciiEvents : PanelEvents
{
    using PanelEvents::PanelEvents;
    void Raise(const UTF16String& type, const UTF16String& data) { PanelEvents::Raise(type, InASCII(data)); }
};

/// Counts how often each type is registered.
class CountsTypes : public PanelEvents
{
public:
    using PanelEvents::PanelEvents;

    void AddTandemEventListener(const UTF16String& type, void* callback) override
    {
        {
            const std::lock_guard<std::mutex> lock(mMutex);
            ++mCounts[type];
        }
        PanelEvents::AddTandemEventListener(type, callback);
    }
    void RemoveTandemEventListener(const UTF16String& type, void* callback) override
    {
        {
            const std::lock_guard<std::mutex> lock(mMutex);
            mCounts[type] = 0;
        }
        PanelEvents::RemoveTandemEventListener(type, callback);
    }

protected:
    static constexpr int kNever = -1;

    /// \return kNever for a type that never was registered.
    int CountOf(const UTF16String& type)
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        const auto found = mCounts.find(type);
        return found == mCounts.end() ? kNever : found->second;
    }

private:
    std::mutex mMutex;
    std::map<UTF16String, int> mCounts;
};

struct RaisesUnknown : CountsTypes
{
    using CountsTypes::CountsTypes;
    void Raise(const UTF16String& type, const UTF16String& data)
    {
        if (CountOf(type) == kNever)
            Kiln::StationUtils::BroadcastMessage(Ridge::GetPlexaStationID(), Ridge::TandemEvent(type, data));
        PanelEvents::Raise(type, data);
    }
};

struct RemovesOnce : CountsTypes
{
    using CountsTypes::CountsTypes;
    void RemoveTandemEventListener(const UTF16String& type, void* callback) override
    {
        if (CountOf(type) <= 0)
            throw std::logic_error("not registered");
        CountsTypes::RemoveTandemEventListener(type, callback);
    }
};

struct OncePerRegistration : CountsTypes
{
    using CountsTypes::CountsTypes;
    void Raise(const UTF16String& type, const UTF16String& data)
    {
        for (int i = CountOf(type); i > 0; --i)
            PanelEvents::Raise(type, data);
    }
};

struct NeverRemoves : PanelEvents
{
    using PanelEvents::PanelEvents;
    void RemoveTandemEventListener(const UTF16String& /*type*/, void* /*callback*/) override {}
};

/// Holds events until somebody waits for them.
struct HoldsEvents : PanelEvents
{
    using PanelEvents::PanelEvents;
    using Event = std::pair<UTF16String, UTF16String>;

    void Raise(const UTF16String& type, const UTF16String& data)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        events.emplace_back(type, data);
    }
    void Flush()
    {
        for (;;) {
            Event event;
            {
                const std::lock_guard<std::mutex> lock(mutex);
                if (events.empty())
                    return;
                Arrange(events);
                event = events.front();
                events.erase(events.begin());
            }
            PanelEvents::Raise(event.first, event.second);
        }
    }
    virtual void Arrange(std::vector<Event>& /*held*/) {}

    std::mutex mutex;
    std::vector<Event> events;
};

struct GroupsByType : HoldsEvents
{
    using HoldsEvents::HoldsEvents;
    void Arrange(std::vector<Event>& held) override
    {
        for (auto group = held.begin(); group != held.end();)
            group = std::stable_partition(
                group, held.end(), [type = group->first](const Event& event) { return event.first == type; });
    }
};

struct AsciiNotifications : PanelEvents
{
    using PanelEvents::PanelEvents;
    void DispatchApplicationEvent(const std::string& type, const std::string& data) override
    {
        PanelEvents::DispatchApplicationEvent(type, InASCII(data));
    }
};

struct CutsNotifications : PanelEvents
{
    using PanelEvents::PanelEvents;
    void DispatchApplicationEvent(const std::string& type, const std::string& data) override
    {
        PanelEvents::DispatchApplicationEvent(type, data.substr(0, 1U << 20U));
    }
};

struct LatinID : PanelEvents
{
    using PanelEvents::PanelEvents;
    std::string GetBrowserID() override { return "B\xFCro"; }
};

struct RegistersOnOneThread : PanelEvents
{
    using PanelEvents::PanelEvents;
    void AddTandemEventListener(const UTF16String& type, void* callback) override
    {
        thread.Require();
        PanelEvents::AddTandemEventListener(type, callback);
    }
    OneThread thread;
};

struct RoomFor32 : PanelEvents
{
    using PanelEvents::PanelEvents;
    void AddTandemEventListener(const UTF16String& type, void* callback) override
    {
        if (count < 32) {
            ++count;
            PanelEvents::AddTandemEventListener(type, callback);
        }
    }
    void RemoveTandemEventListener(const UTF16String& type, void* callback) override
    {
        count = 0;
        PanelEvents::RemoveTandemEventListener(type, callback);
    }
    std::atomic<int> count{0};
};

struct LosesRegisteredInside : PanelEvents
{
    using PanelEvents::PanelEvents;
    void AddTandemEventListener(const UTF16String& type, void* callback) override
    {
        if (ThreadedStations::Inside() == 0)
            PanelEvents::AddTandemEventListener(type, callback);
    }
};

/// Says whether this thread is in a call already.
class Nesting
{
public:
    Nesting() : mOuter(std::exchange(Inside(), true)) {}
    ~Nesting() { Inside() = mOuter; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

    bool IsNested() const { return mOuter; }

private:
    static bool& Inside()
    {
        thread_local bool inside = false;
        return inside;
    }

    const bool mOuter;
};

struct NoNestedNotifications : PanelEvents
{
    using PanelEvents::PanelEvents;
    void DispatchApplicationEvent(const std::string& type, const std::string& data) override
    {
        const Nesting nesting;
        if (!nesting.IsNested())
            PanelEvents::DispatchApplicationEvent(type, data);
    }
};

struct NoNestedEvents : PanelEvents
{
    using PanelEvents::PanelEvents;
    void Raise(const UTF16String& type, const UTF16String& data)
    {
        const Nesting nesting;
        if (!nesting.IsNested())
            PanelEvents::Raise(type, data);
    }
};

struct NoEventsOfComponents : PanelEvents
{
    using PanelEvents::PanelEvents;
    void Raise(const UTF16String& type, const UTF16String& data)
    {
        if (thread.IsHere())
            PanelEvents::Raise(type, data);
    }
    OneThread thread;
};

/// Does what it is told until that throws.
class UntilItThrows
{
public:
    template <class Action>
    void Do(Action action)
    {
        if (mThrown)
            return;
        try {
            action();
        } catch (...) {
            mThrown = true;
            throw;
        }
    }
    void Reset() { mThrown = false; }

private:
    std::atomic<bool> mThrown{false};
};

struct SilentAfterPanelThrew : PanelEvents
{
    using PanelEvents::PanelEvents;
    void DispatchApplicationEvent(const std::string& type, const std::string& data) override
    {
        dispatch.Do([&] { PanelEvents::DispatchApplicationEvent(type, data); });
    }
    UntilItThrows dispatch;
};

/// Until the type is removed.
struct DeafAfterDispatcherThrew : PanelEvents
{
    using PanelEvents::PanelEvents;
    void RemoveTandemEventListener(const UTF16String& type, void* callback) override
    {
        raise.Reset();
        PanelEvents::RemoveTandemEventListener(type, callback);
    }
    void Raise(const UTF16String& type, const UTF16String& data)
    {
        raise.Do([&] { PanelEvents::Raise(type, data); });
    }
    UntilItThrows raise;
};

}  // namespace FaultyPanels
