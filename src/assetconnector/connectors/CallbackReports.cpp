#include "assetconnector/connectors/CallbackReports.h"

#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"

#include <utility>

namespace AC {

void AppendMasterClip(const ReadXMPReport& report, const UTF16String& customMetadata, ACMessage& record)
{
    if (auto info = Ridge::AssetMediaInfo::CreateMasterClipMediaInfo(
            report.mediaInfo, report.mediaPath, Kiln::PathUtils::GetFilePart(report.mediaPath), report.xmp,
            customMetadata, report.createTime, report.lastModifyTime, UTF16String()))
        record.assetMediaInfoList.push_back(std::move(info));
}

}  // namespace AC
