#pragma once

#include "conformance/Run.h"
#include "reference_host/Host.h"
#include "reference_host/Marker.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <stdexcept>
#include <thread>
#include <type_traits>
#include <utility>

/// Stations with a user-interface thread; they tell whether this thread is inside a broadcast.
class ThreadedStations : public ReferenceHost::Stations
{
public:
    ThreadedStations() : Stations(Delivery::kOwnThread) {}

    void BroadcastMessage(const ferrite::utility::ImmutableString& station,
                          const Kiln::Message& message) override
    {
        struct Depth
        {
            Depth() { ++Inside(); }
            ~Depth() { --Inside(); }
        } const depth;
        Stations::BroadcastMessage(station, message);
    }

    void Wait() { WaitUntilDelivered(); }

    static int& Inside()
    {
        thread_local int depth = 0;
        return depth;
    }
};

/// Stations that deliver what is posted where somebody waits for it.
class StationsByHand : public ReferenceHost::Stations
{
public:
    StationsByHand() : Stations(Delivery::kByHand) {}
    void Wait() { DeliverPosted(); }
};

/// What belongs to the thread that made it.
class OneThread
{
public:
    bool IsHere() const { return std::this_thread::get_id() == mThread; }
    void Require() const
    {
        if (!IsHere())
            throw std::logic_error("not on this thread");
    }

private:
    const std::thread::id mThread = std::this_thread::get_id();
};

class FunctionPanel : public ReferenceHost::Panel
{
public:
    explicit FunctionPanel(Conformance::PanelFunction function) : mFunction(std::move(function)) {}
    void OnNotification(const std::string& type, const std::string& data) override { mFunction(type, data); }

private:
    const Conformance::PanelFunction mFunction;
};

/// The reference host, ready for the kit, with one service replaced.
/// \tparam Service Of the host, or any other class for none.
template <class Service>
class Rig
{
    template <class Interface, class Sound>
    using Or = std::conditional_t<std::is_base_of_v<Interface, Service>, Service, Sound>;

public:
    Rig()
    {
        subject.raisePanelEvent = [this](const auto& type, const auto& data) { panels.Raise(type, data); };
        subject.waitForUserInterface = [this] { Wait(); };
        subject.setPanel = [this](const auto& function) { SetPanel(function); };
        subject.setReport = [this](const auto& function) { SetReport(function); };
        subject.openProject = [this](bool open) { OpenProject(open); };
        subject.setCachedXMP = [this](const auto& path, const auto& packet) {
            library.SetCachedXMP(path, 0, packet);
        };
        subject.exhaustMemory = [this](bool exhausted) {
            memory.SetAllocationsLeft(exhausted ? 0 : ReferenceHost::Memory::kUnlimited);
        };
        subject.makeMarker = [] { return ReferenceHost::Marker::Make(u"<marker/>"); };
        subject.dropPosted = [this] { stations.DropPosted(); };
    }
    Rig(const Rig&) = delete;
    Rig& operator=(const Rig&) = delete;

private:
    /// Of panels, too, that hold their events until then.
    void Wait()
    {
        Flush(panels, 0);
        stations.Wait();
    }

    // For panels that have a Flush both fit, and the first, without a conversion, better.
    template <class Panels>
    static auto Flush(Panels& held, int /*preferred*/) -> decltype(held.Flush())
    {
        held.Flush();
    }
    template <class Panels>
    static void Flush(Panels& /*direct*/, long /*otherwise*/)
    {
    }

    void SetPanel(const Conformance::PanelFunction& function)
    {
        if (panel)
            panels.Detach(*panel);
        panel.reset();
        if (!function)
            return;
        panel = boost::make_shared<FunctionPanel>(function);
        panels.Attach(panel);
    }

    void SetReport(const Conformance::ReportFunction& report)
    {
        texts.SetSDKInfoHandler(
            report ? [report](const ReferenceHost::SDKInfo& info) { report(info.text, info.detail); }
                   : boost::function<void(const ReferenceHost::SDKInfo&)>());
    }

    void OpenProject(bool open)
    {
        if (!open)
            project = library.GetProject();
        library.SetProject(open ? project : nullptr);
    }

public:
    Or<Kiln::IMemory, ReferenceHost::Memory> memory;
    Or<Kiln::IFiles, ReferenceHost::Files> files;
    Or<ferrite::ITexts, ReferenceHost::Texts> texts;
    Or<Ridge::IIngestLibrary, ReferenceHost::IngestLibrary> library;
    Or<Kiln::IStations, ThreadedStations> stations;
    Or<Plexa::IPanelEvents, ReferenceHost::PanelEvents> panels{stations};
    boost::shared_ptr<FunctionPanel> panel;
    boost::shared_ptr<Ridge::SRProject> project;
    Conformance::Subject subject{AC::HostServices{panels, stations, library, files, texts, memory}};
};
