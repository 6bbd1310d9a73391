#include "connectors/EventCatalogue.h"
#include "connectors/IngestGlintLibraryConnector.h"
#include "connectors/IngestMediaCollectionConnector.h"
#include "host/ridge/AssetItem.h"
#include "host/ridge/TandemEvents.h"
#include "host/ridge/Utilities.h"
#include "message/ACMessage.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/MediaInfo.h"
#include "tests/support/HostTest.h"

#include <boost/make_shared.hpp>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <unistd.h>

namespace {

using ferrite::utility::Guid;

std::size_t ResidentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t size = 0;
    std::size_t resident = 0;
    file >> size >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// Many messages of every road through both connectors, as a long day brings them.
class Soak : public HostTest
{
protected:
    void Round()
    {
        for (const auto& connector : {library, mediaCollection}) {
            connector->OnIngestStarted(task);
            connector->OnSaveAsset(task, task, infos, item, true);
            connector->OnTransferProgress(task, task, 50);
            connector->OnReadXMPFinished(task, task, 0, u"/media/a.mov", task, {}, xmp, u"", u"", task, task,
                                         {}, {});
        }
        Raise(AC::kPlexaEventType_OpenIngestDlg, u"<a><targetBin ID='bin'/></a>");
        Raise(AC::kPlexaEventType_ExportAsset,
              u"<a><roughCutUseLocalFile>true</roughCutUseLocalFile><assetItemList><assetItem><filePath "
              u"path='/media/b.mov'/></assetItem></assetItemList></a>");
        Raise(AC::kPlexaEventType_TransferRequest, u"<a><broken>");
        host.GetStations().DeliverPosted();
    }

    void Raise(const UTF16String& type, const UTF16String& data)
    {
        host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(), Ridge::TandemEvent(type, data));
    }

    static constexpr int kMessagesOfARound = 14;

    ReferenceHost::IdleDispatcher dispatcher;
    Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> library =
        AC::CreateIngestGlintLibraryConnector(&dispatcher);
    Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> mediaCollection =
        AC::CreateIngestMediaCollectionConnector(&dispatcher);
    Guid task{1, 2};
    Ridge::XMPText xmp = boost::make_shared<std::string>(4000, 'x');
    Ridge::AssetMediaInfoList infos{
        boost::make_shared<ReferenceHost::MediaInfo>(Ridge::AssetMediaInfoValues{})};
    boost::shared_ptr<Ridge::AssetItem> item = boost::make_shared<Ridge::AssetItem>(Ridge::AssetItemValues{});
};

TEST_F(Soak, LeavesNothingBehind)
{
    const bool isLong = std::getenv("ASSETCONNECTOR_LONG_TESTS") != nullptr;
    const int rounds = (isLong ? 1000000 : 7000) / kMessagesOfARound;
    for (int i = 0; i < rounds / 10; ++i)
        Round();
    const std::size_t before = ResidentBytes();
    for (int i = 0; i < rounds; ++i)
        Round();
    const std::size_t after = ResidentBytes();
    std::cerr << "resident bytes: " << before << " before, " << after << " after\n";
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(after, before + before / 50);
#endif  // sanitizers keep freed memory
    EXPECT_EQ(host.GetMemory().LiveBlocks(), 0U);
    EXPECT_EQ(infos.front().use_count(), 1);
    EXPECT_EQ(item.use_count(), 1);
}

}  // namespace
