#pragma once

#include "assetconnector/connectors/IAssetConnectorPrivate.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"
#include "desk/Origin.h"
#include "desk/Work.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/Host.h"

#include <boost/shared_ptr.hpp>

#include <array>
#include <string>
#include <vector>

namespace Desk {

using Notifier = Ridge::IIngestLibraryNotifier;

/// Whether a callback is told by the media collection's connector alone, whoever asked.
template <auto kCallback>
constexpr bool kIsOfCollectionAlone = false;
template <>
inline constexpr bool kIsOfCollectionAlone<&Notifier::OnInitMiniMetadata> = true;
template <>
inline constexpr bool kIsOfCollectionAlone<&Notifier::OnGetTargetBinPath> = true;

/// The installed host with both connectors. Both hear every request: of those that both handle only the
/// connector of the asker's kind forwards it to the work, what one alone handles is forwarded whoever asked.
/// Made, used and destroyed on one thread.
class Host
{
public:
    /// \param work Outlives the host.
    /// \throws As AC::InstallHost.
    explicit Host(Work& work);

    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// \param panel Gets every notification. Not null.
    void Attach(boost::shared_ptr<ReferenceHost::Panel> panel);

    /// \return The identifiers of the requests that the work handles beside the connectors.
    const std::vector<std::string>& Handles() const noexcept { return mHandles; }

    /// A panel raises a request. \param type Its identifier. \param xml Its text; both UTF-8, not checked.
    /// \throws What the work throws; the rest of the request is dropped.
    void Raise(const Origin& asker, const std::string& type, const std::string& xml);

    /// \return Whose request is being raised, null outside of Raise.
    const Origin* Asker() const noexcept { return mAsker; }

    /// Tells the outcome of a request, or how far it came, through the asker's connector and with its id.
    /// \tparam kCallback Such as &Notifier::OnTransferStatus.
    template <auto kCallback, class... Arguments>
    void Answer(const Origin& asker, const Arguments&... arguments)
    {
        const BrowserIDScope scope(mServices.GetPanelEvents(), asker.browserID);
        Call<kCallback>(kIsOfCollectionAlone<kCallback> ? PanelKind::kMediaCollection : asker.kind,
                        arguments...);
    }

    /// Tells news, which name no panel.
    template <auto kCallback, class... Arguments>
    void Tell(const Arguments&... arguments)
    {
        const BrowserIDScope scope(mServices.GetPanelEvents(), {});
        if (!kIsOfCollectionAlone<kCallback>)
            Call<kCallback>(PanelKind::kLibrary, arguments...);
        Call<kCallback>(PanelKind::kMediaCollection, arguments...);
    }

    /// Delivers the station messages that are posted. \return Whether there were any: they may have posted
    /// more. \throws What a listener throws: that message is done with, those behind it stay.
    bool DeliverPosted() { return mServices.GetStations().DeliverPosted() > 0; }

    ReferenceHost::Host& Services() noexcept { return mServices; }

private:
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

    struct Seat
    {
        Kiln::InterfaceRef<Notifier> connector;
        Kiln::InterfaceRef<AC::IAssetConnectorPrivate> access;
    };

    template <auto kCallback, class... Arguments>
    void Call(PanelKind kind, const Arguments&... arguments)
    {
        Notifier* const notifier = mSeats[IndexOf(kind)].connector.operator->();
        (notifier->*kCallback)(arguments...);
    }

    Work& mWork;
    const std::vector<std::string> mHandles;
    ReferenceHost::Host mServices{ReferenceHost::Stations::Delivery::kByHand};
    ReferenceHost::Installation mInstallation{mServices};
    ReferenceHost::IdleDispatcher mIdle;
    std::array<Seat, 2> mSeats;  ///< By kind.
    const Origin* mAsker = nullptr;
};

}  // namespace Desk
