#include "recorder/PanelEvents.h"

#include "assetconnector/connectors/EventCatalogue.h"

namespace Recording {
namespace {

const UTF16String& RequestAt(std::size_t place)
{
    return *AC::EventCatalogue()[place].identifier;
}

bool IsRequest(const UTF16String& type)
{
    for (std::size_t place = 0; place < AC::kRequestCount; ++place)
        if (RequestAt(place) == type)
            return true;
    return false;
}

}  // namespace

PanelEvents::PanelEvents(Plexa::IPanelEvents& next, Hook& hook, Stations& stations)
    : ForwardingPanelEvents(next, hook), mStations(stations)
{
}

void PanelEvents::AddTandemEventListener(const UTF16String& type, void* callback)
{
    Register(true, type, [&] { ForwardingPanelEvents::AddTandemEventListener(type, callback); });
}

void PanelEvents::RemoveTandemEventListener(const UTF16String& type, void* callback)
{
    Register(false, type, [&] { ForwardingPanelEvents::RemoveTandemEventListener(type, callback); });
}

template <class Call>
void PanelEvents::Register(bool adds, const UTF16String& type, Call call)
{
    Journal& journal = mHook.GetJournal();
    Journal::InputPtr series;
    journal.Guard(nullptr, [&] { series = Join(adds, type); });
    if (series != nullptr)
        series->isSeries = false;  // what the host does inside the call is inside of it
    try {
        call();
    } catch (...) {
        if (series != nullptr) {
            journal.EndByException(series);
            journal.Guard(nullptr, [&] { Leave(series, true); });
        }
        throw;
    }
    if (series != nullptr)
        series->isSeries = true;
    journal.Guard(nullptr, [&] { Changed(adds, type, journal.Innermost()); });
    if (series != nullptr)
        journal.Guard(nullptr, [&] { Leave(series, false); });
}

Journal::InputPtr PanelEvents::Join(bool adds, const UTF16String& type)
{
    Journal& journal = mHook.GetJournal();
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mSeries.find(std::this_thread::get_id());
    const Input* const innermost = journal.Innermost();
    if (found != mSeries.end()) {
        Series& series = found->second;
        if (series.input.get() == innermost && series.adds == adds && RequestAt(series.next) == type)
            return series.input;
        mSeries.erase(found);
    } else if (innermost != nullptr) {
        return nullptr;
    }
    if ((innermost != nullptr && !innermost->isSeries) || RequestAt(0) != type)
        return nullptr;
    Series series;
    series.adds = adds;
    series.input = journal.Begin([adds](Session::JsonText& out) {
        out.Name("register");
        out.Bool(adds);
    });
    if (series.input == nullptr)
        return nullptr;
    series.input->isSeries = true;
    return mSeries.emplace(std::this_thread::get_id(), series).first->second.input;
}

void PanelEvents::Leave(const Journal::InputPtr& series, bool isThrown)
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        const auto found = mSeries.find(std::this_thread::get_id());
        if (found != mSeries.end() && found->second.input == series) {
            if (++found->second.next < AC::kRequestCount && !isThrown)
                return;
            mSeries.erase(found);
        } else {
            series->type = Input::Type::kOutside;  // another one began inside of it
        }
    }
    if (!isThrown)
        mHook.GetJournal().End(series);
}

void PanelEvents::Changed(bool added, const UTF16String& type, Input* input)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    const bool before = mRegistered.size() == AC::kRequestCount;
    if (added && IsRequest(type))
        mRegistered.insert(type);
    else
        mRegistered.erase(type);
    const bool after = mRegistered.size() == AC::kRequestCount;
    if (before == after)
        return;
    // A replay knows of no registrations but those of an input, and a series may not come to its end.
    const bool isTold =
        input != nullptr && (!after || !input->isSeries || type == RequestAt(AC::kRequestCount - 1));
    mStations.SetRegistered(after && isTold);
    if (isTold)
        input->change.registered = after;
}

}  // namespace Recording
