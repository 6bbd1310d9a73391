#include "assetconnector/message/Records.h"
#include "assetconnector/message/RidgeRecords.h"
#include "reference_host/Forwarders.h"
#include "reference_host/ForwardingDispatcher.h"
#include "session/Operations.h"
#include "tests/support/ForwardedOperations.h"
#include "tests/support/HostTest.h"
#include "tests/support/VirtualFunctions.h"

#include <set>
#include <stdexcept>
#include <tuple>
#include <vector>

namespace {

using namespace ReferenceHost;
using Names = std::vector<std::string>;

/// Keeps the names of operations; throws at one of them.
struct Hook
{
    template <class... Arguments>
    void operator()(const char* operation, const Arguments&... /*arguments*/)
    {
        names.emplace_back(operation);
        if (operation == throwsAt)
            throw std::runtime_error(throwsAt + " failed");
    }
    Names names;
    std::string throwsAt;
};

template <class Service, class Result, class... Parameters>
void CallWithDefaults(Service& service, Result (Service::*call)(Parameters...))
{
    std::tuple<std::decay_t<Parameters>...> arguments;
    std::apply([&](auto&... argument) { static_cast<void>((service.*call)(argument...)); }, arguments);
}

/// A forwarder without its row in the tables of session files would be played without an effect, or could not
/// be shown.
TEST(Forwarders, HaveRowsForSessionFiles)
{
    const std::set<std::string> deliveries = {"Kiln::StationUtils::BroadcastMessage",
                                              "Kiln::Listener::EndSubscriptions"};
    const ForwardedOperations host("Forwarders.h");
    for (const std::string& name : host.actions)
        EXPECT_EQ(Session::FindHostOperation(name) == nullptr, deliveries.count(name) != 0) << name;
    const ForwardedOperations dispatcher("ForwardingDispatcher.h");
    EXPECT_EQ(dispatcher.actions.size(), ALD::kOperationCount);
    for (const std::string& name : dispatcher.actions)
        EXPECT_NE(Session::FindDispatcherOperation(name), nullptr) << name;
}

/// Calls every operation through two forwarders, one behind the other: when an operation passed on another
/// one, the two would see different names, or one name twice.
template <template <class> class Forwarding, class Service, class... Calls>
void ExpectEachGoesToItself(Service& service, Calls... calls)
{
    EXPECT_EQ(sizeof...(calls), VirtualFunctionsOf<Service>() - 2) << "operations that are not called";
    Hook inner;
    Hook outer;
    Forwarding<Hook> innerForwarder(service, inner);
    Forwarding<Hook> outerForwarder(innerForwarder, outer);
    Service& front = outerForwarder;
    (CallWithDefaults(front, calls), ...);
    EXPECT_EQ(outer.names, inner.names);
    EXPECT_EQ(std::set<std::string>(inner.names.begin(), inner.names.end()).size(), sizeof...(calls));
}

TEST(Forwarders, PassEachOperationToItself)
{
    Host host(Stations::Delivery::kByHand);
    const AC::HostServices services = host.Services();

    using P = Plexa::IPanelEvents;
    ExpectEachGoesToItself<ForwardingPanelEvents>(services.panelEvents, &P::AddTandemEventListener,
                                                  &P::RemoveTandemEventListener, &P::DispatchApplicationEvent,
                                                  &P::GetBrowserID);
    using L = Ridge::IIngestLibrary;
    ExpectEachGoesToItself<ForwardingIngestLibrary>(
        services.ingestLibrary, &L::CreateMediaInfo, &L::CreateMasterClipMediaInfo, &L::GetProject,
        &L::ReadXMPFromCache, &L::RegisterAssetMediaInfoToSRCore, &L::CreateCustomMetadataStr,
        &L::PathSupportsXMP, &L::RegisterDBMetadataProvider, &L::RegisterDBMetadataProviderForPath,
        &L::MarkerToPropertyXML);
    using F = Kiln::IFiles;
    ExpectEachGoesToItself<ForwardingFiles>(services.files, &F::ExistsOnDisk, &F::IsDirectory,
                                            &F::ToNormalizedPath, &F::NormalizePathWithoutUNC);
    using T = ferrite::ITexts;
    ExpectEachGoesToItself<ForwardingTexts>(services.texts, &T::Localize, &T::SetSDKInfoString,
                                            &T::CreateUniqueGuid);
}

template <class HookType>
struct DispatcherBehind : ForwardingDispatcher<HookType>
{
    DispatcherBehind(ALD::IAssetLibraryDispatcher& next, HookType& hook)
        : ForwardingDispatcher<HookType>(hook, &next)
    {
    }
};

TEST(Forwarders, PassEachOperationOfTheDispatcherToItself)
{
    IdleDispatcher idle;
    using D = ALD::IAssetLibraryDispatcher;
    ExpectEachGoesToItself<DispatcherBehind>(
        static_cast<D&>(idle), &D::ReadXMPFile, &D::SaveAssetItems, &D::CreateThumbnail,
        &D::CompleteImportFile, &D::ShowIngestDialog, &D::StartMediaIngest, &D::WriteXMPFile, &D::RefuseExit,
        &D::ExportAssets, &D::ReportPanelEvent, &D::StartTransfer, &D::CancelTransfer, &D::RenameItems,
        &D::QueryMediaPropertyInfo, &D::QueryAssociatedFiles, &D::StartTranscode, &D::StartConcatenation,
        &D::CancelTranscode, &D::CancelConcatenation, &D::QueryCurrentWorkMode, &D::QueryMontaneInstalled,
        &D::ApplyTagTemplate);
}

TEST(Forwarders, WhatTheHookThrowsStopsTheCall)
{
    Host host(Stations::Delivery::kByHand);
    Hook hook;
    hook.throwsAt = "Ridge::SRProject::RegisterAssetMediaInfoList";
    ForwardingIngestLibrary<Hook> library(host.GetIngestLibrary(), hook);
    const auto info = library.CreateMasterClipMediaInfo({}, u"/a", u"a", nullptr, u"", u"", u"", u"");

    EXPECT_THROW(library.GetProject()->RegisterAssetMediaInfoList({}, {info}, false, false),
                 std::runtime_error);
    EXPECT_EQ(library.GetProject()->GetAssetMediaInfo(u"/a", false), nullptr);
    host.GetIngestLibrary().SetProject(nullptr);
    EXPECT_EQ(library.GetProject(), nullptr);
}

}  // namespace
