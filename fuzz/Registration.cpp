// A hostile asset list is registered: afterwards every item of a local rough cut has a media info.

#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/registration/ACUtils.h"
#include "fuzz/FuzzHost.h"

#include <set>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ReferenceHost::IngestLibrary& library = FuzzHost::Get().Host().GetIngestLibrary();
    library.SetProject(boost::make_shared<ReferenceHost::Project>());
    AC::ACMessage message;
    if (!AC::ACUtils::DecodeXMLAndRegisterMediaInfo(TextOf(data, size), message))
        return 0;
    if (message.roughCutUseLocalFile != AC::kACMessage_True)
        return 0;
    std::set<ferrite::utility::Guid> known;
    for (const auto& info : message.assetMediaInfoList)
        known.insert(info->GetAssetMediaInfoGUID());
    for (const auto& item : message.assetItemList)
        Require(known.count(item->GetAssetMediaInfoGUID()) == 1);
    return 0;
}
