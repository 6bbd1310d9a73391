#pragma once

#include <set>
#include <string_view>

/// The members that both directions know.
inline const std::set<std::string_view> kBothWays = {
    "header",
    "assetMediaInfoList",
    "assetItemList",
    "filePath",
    "taskItemID",
    "batchID",
    "errorInfo",
    "fileContent",
    "deleteOnDisk",
    "result",
    "mediaUseLocalFile",
    "roughCutUseLocalFile",
    "fileList",
    "percentage",
    "thumbnailRequest",
    "allowExit",
    "taskIDList",
    "actionResultList",
    "commandList",
    "customMetadata",
    "targetBin",
    "mediaPropertyInfo",
};
