// Interfaces between host and library do not grow within a version: a library would call past an older
// host's, and a host past an older library's.

#include "assetconnector/host/Host.h"
#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/host/kiln/Message.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"
#include "assetconnector/host/ridge/SRProject.h"
#include "assetconnector/message/Description.h"
#include "tests/support/VirtualFunctions.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

TEST(Interfaces, StayAsTheyAreWithinAVersion)
{
    struct
    {
        const char* name;
        std::size_t actual;
        std::size_t expected;
    } const rows[] = {
        {"IPanelEvents", VirtualFunctionsOf<Plexa::IPanelEvents>(), 6},
        {"IStations", VirtualFunctionsOf<Kiln::IStations>(), 6},
        {"IIngestLibrary", VirtualFunctionsOf<Ridge::IIngestLibrary>(), 12},
        {"IFiles", VirtualFunctionsOf<Kiln::IFiles>(), 6},
        {"ITexts", VirtualFunctionsOf<ferrite::ITexts>(), 5},
        {"IMemory", VirtualFunctionsOf<Kiln::IMemory>(), 4},
        {"IAssetLibraryDispatcher", VirtualFunctionsOf<ALD::IAssetLibraryDispatcher>(), 24},
        {"IIngestLibraryNotifier", VirtualFunctionsOf<Ridge::IIngestLibraryNotifier>(), 35},
        {"AssetMediaInfo", VirtualFunctionsOf<Ridge::AssetMediaInfo>(), 15},
        {"SRProject", VirtualFunctionsOf<Ridge::SRProject>(), 5},
        {"IMarker", VirtualFunctionsOf<Keel::IMarker>(), 6},
        {"Message", VirtualFunctionsOf<Kiln::Message>(), 4},
        {"HostServices", sizeof(AC::HostServices) / sizeof(void*), 6},
        {"ACMessage", AC::Description::CountMembers<AC::ACMessage>(), 55},  // listeners read it
    };
    ASSERT_EQ(AC::kInterfaceVersion, 1U) << "a new version: write down what its interfaces have";
    for (const auto& row : rows)
        EXPECT_EQ(row.actual, row.expected)
            << row.name << ": derive a new interface, or change the version in Version.h and the number here";
    EXPECT_EQ(VirtualFunctionsOf<ALD::IAssetLibraryDispatcher>() - 2, std::size_t{ALD::kOperationCount});
}

/// Calls go by place: what a version adds stands behind what there was.
TEST(Interfaces, GrowAtTheirEnds)
{
    struct
    {
        const char* last;
        std::size_t actual;
        std::size_t expected;
    } const rows[] = {
        {"GetBrowserID", PlaceOf(&Plexa::IPanelEvents::GetBrowserID), 5},
        {"PostMessageToUIThread", PlaceOf(&Kiln::IStations::PostMessageToUIThread), 5},
        {"MarkerToPropertyXML", PlaceOf(&Ridge::IIngestLibrary::MarkerToPropertyXML), 11},
        {"NormalizePathWithoutUNC", PlaceOf(&Kiln::IFiles::NormalizePathWithoutUNC), 5},
        {"CreateUniqueGuid", PlaceOf(&ferrite::ITexts::CreateUniqueGuid), 4},
        {"Dispose", PlaceOf(&Kiln::IMemory::Dispose), 3},
        {"ApplyTagTemplate", PlaceOf(&ALD::IAssetLibraryDispatcher::ApplyTagTemplate), 23},
        {"OnXMPFileTimeChanged", PlaceOf(&Ridge::IIngestLibraryNotifier::OnXMPFileTimeChanged), 34},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.actual, row.expected) << row.last << ": something new stands before it";
}

}  // namespace
