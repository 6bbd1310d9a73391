#include "recorder/Stations.h"

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "session/format/StationMessageClasses.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

namespace Recording {
namespace {

using ferrite::utility::ImmutableString;
using Session::JsonText;

/// \return The kind of a connector; kKindCount for any other listener.
Kind KindOf(const Kiln::Listener& listener)
{
    for (Kind kind = 0; kind < kKindCount; ++kind)
        if (Session::kConnectorKinds[kind].isOfClass(listener))
            return kind;
    return kKindCount;
}

/// \return The name of a message that connectors act on; null for any other.
const char* NameOf(const Kiln::Message& message)
{
    if (message.MessageTypeID() == Ridge::TandemEvent::TypeID())
        return "Ridge::TandemEvent";
    if (message.MessageTypeID() == Ridge::AddTandemListenerEvent::TypeID())
        return "Ridge::AddTandemListenerEvent";
    if (message.MessageTypeID() == Ridge::RemoveTandemListenerEvent::TypeID())
        return "Ridge::RemoveTandemListenerEvent";
    return nullptr;
}

bool IsCatalogued(const UTF16String& type)
{
    const auto& events = AC::EventCatalogue();
    return std::any_of(events.begin(), events.begin() + AC::kRequestCount,
                       [&type](const AC::EventEntry& each) { return *each.identifier == type; });
}

/// \return What tells one posted message from another, of the line that is written from that place on up to
/// its
///         payload.
std::size_t HashOfMessage(const JsonText& line, std::size_t begin, const Session::StationMessageClass& row)
{
    const std::string_view text = std::string_view(line.Text()).substr(begin);
    const std::string_view payload = text.substr(text.find("\"payload\":"));
    return std::hash<std::string_view>()(payload) * 31 + row.typeID;
}

/// \return Whether half a surrogate pair is in the text.
bool HasHalfPair(const UTF16String& text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] < 0xD800 || text[at] > 0xDFFF)
            continue;
        const bool isPair =
            text[at] < 0xDC00 && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] <= 0xDFFF;
        if (!isPair)
            return true;
        ++at;
    }
    return false;
}

void WriteMessage(JsonText& out, const std::string& station, const char* name, const Kiln::Message& message,
                  bool registered)
{
    const auto* const event = message.MessageTypeID() == Ridge::TandemEvent::TypeID()
                                  ? static_cast<const Ridge::TandemEvent*>(&message)
                                  : nullptr;
    const bool ofPanels = station == Ridge::GetPlexaStationID().AsUTF8();
    if (event != nullptr && ofPanels && registered && IsCatalogued(event->GetType())) {
        out.Name("panel");
        out.String(event->GetType());
    } else {
        out.Name("station");
        out.String(std::string_view(ofPanels ? "panel" : station));
        out.Name("message");
        out.String(std::string_view(name));
        if (event != nullptr) {
            out.Name("type");
            out.String(event->GetType());
        }
    }
    if (event != nullptr) {
        out.Name("data");
        out.String(event->GetData());
    }
}

}  // namespace

/// The listener that the host knows instead of a connector.
class Stations::Proxy final : public Kiln::Listener, public std::enable_shared_from_this<Proxy>
{
public:
    Proxy(Stations& stations, Kind kind, std::string station, Kiln::Listener& listener)
        : mStations(stations), mKind(kind), mStation(std::move(station)), mListener(listener)
    {
    }
    ~Proxy() override { EndSubscriptions(); }

    const std::string& Station() const { return mStation; }

private:
    void OnStationMessage(const Kiln::Message& message) override
    {
        // A connector that ends inside its own delivery takes its proxies along.
        const std::shared_ptr<Proxy> kept = shared_from_this();
        mStations.Reach(mKind, mStation, mListener, message);
    }

    Stations& mStations;
    const Kind mKind;
    const std::string mStation;
    Kiln::Listener& mListener;
};

Stations::Stations(Kiln::IStations& next, Hook& hook, Troubles& troubles)
    : mNext(next), mHook(hook), mTroubles(troubles)
{
}

Stations::~Stations() = default;

bool Stations::BeginConnector(Kind kind)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    Recorded& recorded = mRecorded[kind];
    if (std::exchange(recorded.isTaken, true))
        return false;
    recorded.isMade = false;
    recorded.maker = std::this_thread::get_id();
    return true;
}

void Stations::EndConnector(Kind kind, bool made)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mRecorded[kind].isMade = made;
    mRecorded[kind].isTaken = made;
    mRecorded[kind].maker = {};
}

Stations::Recorded* Stations::Making(Kind kind, const Kiln::Listener& listener)
{
    if (kind == kKindCount)
        return nullptr;
    Recorded& recorded = mRecorded[kind];
    if (recorded.maker != std::this_thread::get_id() ||
        (recorded.listener != nullptr && recorded.listener != &listener))
        return nullptr;
    recorded.listener = &listener;
    return &recorded;
}

void Stations::AddListener(const ImmutableString& station, Kiln::Listener& listener)
{
    constexpr const char* kOperation = "Kiln::StationUtils::AddListener";
    const Kind kind = KindOf(listener);
    std::shared_ptr<Proxy> proxy;
    try {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (Recorded* const recorded = Making(kind, listener)) {
            proxy = std::make_shared<Proxy>(*this, kind, station.AsUTF8(), listener);
            recorded->proxies.push_back(proxy);
        }
    } catch (...) {
        proxy.reset();
    }
    if (proxy == nullptr) {
        if (kind != kKindCount)
            mTroubles.Tell("connector",
                           "a connector is not recorded: there is one of its kind, it was not made by the "
                           "recorder, or there is no memory");
        return mNext.AddListener(station, listener);
    }
    Input* const input = mHook.GetJournal().Innermost();
    mHook.Count(input, kOperation);
    mHook.Effect(input, [&](JsonText& out) { mHook.Writer().HostCall(out, kOperation, station); });
    // A delivery may begin at once.
    mHook.Through(input, kOperation, [&] { mNext.AddListener(station, *proxy); });
}

void Stations::EndSubscriptions(Kiln::Listener& listener) noexcept
{
    std::vector<std::shared_ptr<Proxy>> proxies;
    const Kind kind = KindOfRecorded(listener);
    bool wasMade = false;
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (kind < kKindCount) {
            proxies.swap(mRecorded[kind].proxies);
            mRecorded[kind].listener = nullptr;
            wasMade = mRecorded[kind].isMade;
        }
    }
    for (const auto& proxy : proxies)
        mNext.EndSubscriptions(*proxy);
    mNext.EndSubscriptions(listener);  // where no proxy could be made, it was subscribed itself
    if (!wasMade)
        return;
    // What reached the connector before began before.
    Journal& journal = mHook.GetJournal();
    const Journal::InputPtr input = journal.Begin([kind](JsonText& out) {
        out.Name("release");
        out.String(Session::kConnectorKinds[kind].name);
    });
    if (input != nullptr) {
        input->change.destroyed = kind;
        journal.Effect(*input, [&](JsonText& out) {
            mHook.Writer().Destroyed(out, Session::kConnectorKinds[kind].name);
        });
    } else {
        journal.MissEnd(kind);
    }
    journal.End(input);
    const std::lock_guard<std::mutex> lock(mMutex);
    mRecorded[kind].isMade = false;
    mRecorded[kind].isTaken = false;
}

Kind Stations::KindOfRecorded(const Kiln::Listener& listener)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto found = std::find_if(mRecorded.begin(), mRecorded.end(),
                                    [&listener](const Recorded& each) { return each.listener == &listener; });
    return static_cast<Kind>(found - mRecorded.begin());
}

std::size_t Stations::CountListeners(const std::string& station)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    std::size_t count = 0;
    for (const Recorded& recorded : mRecorded)
        for (const auto& proxy : recorded.proxies)
            count += proxy->Station() == station ? 1 : 0;
    return count;
}

void Stations::Reach(Kind kind, const std::string& station, Kiln::Listener& listener,
                     const Kiln::Message& message)
{
    const char* const name = NameOf(message);
    if (name == nullptr)
        return Deliver(listener, message);
    Journal& journal = mHook.GetJournal();
    const Journal::InputPtr input = journal.BeginDelivery(kind, message, station, [&](JsonText& out) {
        WriteMessage(out, station, name, message, mRegistered);
    });
    if (input != nullptr && message.MessageTypeID() == Ridge::TandemEvent::TypeID()) {
        const auto& event = static_cast<const Ridge::TandemEvent&>(message);
        input->request = &event.GetType();
        input->hasHalfPair = HasHalfPair(event.GetData());
    }
    const std::size_t expected = CountListeners(station);
    try {
        Deliver(listener, message);
    } catch (...) {
        journal.EndByException(input);
        throw;
    }
    if (input != nullptr && Session::kConnectorKinds[kind].name == "library")
        mHook.TurnToRead(*input);
    journal.EndDelivery(input, expected);
}

void Stations::BroadcastMessage(const ImmutableString& station, const Kiln::Message& message)
{
    if (const auto* const row = Session::FindStationMessageClass(message))
        mHook.GetJournal().Add(Input::Type::kDelivery, [&](Input& input, JsonText& out) {
            const std::size_t begin = out.Text().size();
            mHook.Writer().Delivery(out, *row, station, message);
            input.delivered = HashOfMessage(out, begin, *row);
        });
    mNext.BroadcastMessage(station, message);
}

void Stations::PostMessageToUIThread(const ImmutableString& station, const Kiln::Message& message, bool flag)
{
    constexpr const char* kOperation = "Kiln::StationUtils::PostMessageToUIThread";
    const auto* const row = Session::FindStationMessageClass(message);
    if (row == nullptr)
        return mNext.PostMessageToUIThread(station, message, flag);
    Input* const input = mHook.GetJournal().Innermost();
    mHook.Count(input, kOperation);
    std::size_t posted = 0;
    mHook.Effect(input, [&](JsonText& out) {
        const std::size_t begin = out.Text().size();
        mHook.Writer().Post(out, *row, station, message, flag);
        posted = HashOfMessage(out, begin, *row);
    });
    mHook.Through(input, kOperation, [&] { mNext.PostMessageToUIThread(station, message, flag); });
    if (input != nullptr)
        mHook.GetJournal().Guard(input, [&] { input->posts.push_back(posted); });
}

}  // namespace Recording
