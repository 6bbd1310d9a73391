#include "reference_host/MediaInfo.h"

#include "assetconnector/message/Comparison.h"

namespace ReferenceHost {

Ridge::AssetMediaInfoValues MediaInfo::ValuesOf(const Ridge::AssetMediaInfo& info)
{
    const auto* own = dynamic_cast<const MediaInfo*>(&info);
    return own != nullptr ? own->Values() : AC::Comparison::ValuesOf(info);
}

}  // namespace ReferenceHost
