#pragma once

#include "assetconnector/connectors/IAssetConnectorPrivate.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"
#include "desk/Host.h"
#include "desk/Marks.h"
#include "desk/Work.h"
#include "recorder/Recorder.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/Host.h"

#include <array>

namespace Desk {

/// The reference host with both connectors, behind a recorder. Both hear every request: of those that both
/// handle only the connector of the asker's kind forwards it to the work, what one alone handles is forwarded
/// whoever asked. Callbacks that carry the message of a request that the work took over are told through the
/// asker's connector, with the asker's browser id; others are news, told through both, and name no panel.
class LiveHost final : public Host
{
public:
    /// \param work Outlives the host. \param recording Of what passes.
    /// \throws As AC::InstallHost.
    explicit LiveHost(Work& work, const Recording::Options& recording = {});

    void Attach(boost::shared_ptr<ReferenceHost::Panel> panel) override;
    const std::vector<std::string>& Handles() const override { return mHandles; }
    void Raise(const Origin& asker, const std::string& type, const std::string& xml) override;
    bool DeliverPosted() override { return mServices.GetStations().DeliverPosted() > 0; }
    void Callback(const std::string& name, const Session::Json& arguments,
                  std::optional<PanelKind> to) override;
    void Tell(const std::string& identifier, const std::string& xml) override;
    void Mark(const char* member, const std::string& mark) override { Marks::Put(mRecorder, member, mark); }
    void FlushRecording() override { mRecorder.Flush(); }
    Session::Json State() const override { return {{"mode", "live"}, {"play", nullptr}}; }

    /// \return Whose request is being raised, null outside of Raise.
    const Origin* Asker() const noexcept { return mAsker; }

    ReferenceHost::Host& Services() noexcept { return mServices; }

private:
    using Connector = Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>;

    /// What GetBrowserID gives for as long as it lives.
    class BrowserIDScope
    {
    public:
        BrowserIDScope(ReferenceHost::PanelEvents& events, std::string browserID);
        ~BrowserIDScope();
        BrowserIDScope(const BrowserIDScope&) = delete;
        BrowserIDScope& operator=(const BrowserIDScope&) = delete;

    private:
        ReferenceHost::PanelEvents& mEvents;
        std::string mBefore;
    };

    /// Says that a call is kept from the work.
    struct HeldBack
    {
        template <class... Arguments>
        void operator()(const char* /*operation*/, const Arguments&... /*arguments*/) const
        {
            Marks::Put(recorder, "last", Marks::kHeldBack);
        }

        Recording::Recorder& recorder;
    };

    struct Seat
    {
        Connector connector;
        Kiln::InterfaceRef<AC::IAssetConnectorPrivate> access;
    };

    void Call(const std::string& name, const Session::Json& arguments, PanelKind kind,
              const std::string& browserID);

    Seat& SeatOf(PanelKind kind) { return mSeats[IndexOf(kind)]; }

    Work& mWork;
    const std::vector<std::string> mHandles;
    ReferenceHost::Host mServices{ReferenceHost::Stations::Delivery::kByHand};
    Recording::Recorder mRecorder;
    ReferenceHost::Installation mInstallation{mRecorder.Services(), mServices.GetStations()};
    HeldBack mHeldBack{mRecorder};
    ReferenceHost::ForwardingDispatcher<HeldBack> mIdle{mHeldBack};
    std::array<Seat, 2> mSeats;  ///< By kind.
    const Origin* mAsker = nullptr;
};

}  // namespace Desk
