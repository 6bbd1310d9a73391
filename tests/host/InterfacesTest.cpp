// Interfaces that the host implements do not grow within a version: a library would call past an older
// host's.

#include "assetconnector/host/Host.h"
#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/host/kiln/Message.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/SRProject.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace {

/// \return How many places the interface's table of virtual functions has, the two of its destructor
/// included.
template <class Interface>
std::size_t VirtualFunctionsOf()
{
    struct Probe : Interface
    {
        virtual void BehindTheLast() = 0;
    };
    const auto member = &Probe::BehindTheLast;
    std::size_t place = 0;  // a pointer to a virtual function begins with its offset, and one
    std::memcpy(&place, &member, sizeof place);
    return (place - 1) / sizeof(void*);
}

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
        {"AssetMediaInfo", VirtualFunctionsOf<Ridge::AssetMediaInfo>(), 15},
        {"SRProject", VirtualFunctionsOf<Ridge::SRProject>(), 5},
        {"IMarker", VirtualFunctionsOf<Keel::IMarker>(), 6},
        {"Message", VirtualFunctionsOf<Kiln::Message>(), 4},
        {"HostServices", sizeof(AC::HostServices) / sizeof(void*), 6},
    };
    ASSERT_EQ(AC::kInterfaceVersion, 1U) << "a new version: write down what its interfaces have";
    for (const auto& row : rows)
        EXPECT_EQ(row.actual, row.expected)
            << row.name << ": derive a new interface, or change the version in Version.h and the number here";
    EXPECT_EQ(VirtualFunctionsOf<ALD::IAssetLibraryDispatcher>() - 2, std::size_t{ALD::kOperationCount});
}

}  // namespace
