#pragma once

#include "assetconnector/host/ridge/SRProject.h"

#include <map>
#include <mutex>

namespace ReferenceHost {

/// The project registry in memory: media infos by their path. Asset items are not kept: nobody asks for them.
/// Every operation may be called on any thread.
class Project : public Ridge::SRProject
{
public:
    boost::shared_ptr<Ridge::AssetMediaInfo> GetAssetMediaInfo(const UTF16String& mediaPath,
                                                               bool reservedFlag) override;

    /// Puts a new object into the registry, with the values of the one before: whoever holds that one sees
    /// no change.
    void RefreshAssetMediaInfoByPath(const UTF16String& mediaPath, const Ridge::XMPText& xmp) override;

    /// Adds the infos; of several with one path the last one stays.
    void RegisterAssetMediaInfoList(const Ridge::AssetItemList& items, const Ridge::AssetMediaInfoList& infos,
                                    bool firstFlag, bool secondFlag) override;

private:
    std::mutex mMutex;  ///< Not held while an info is read or destroyed, which may be the host's own class.
    std::map<UTF16String, boost::shared_ptr<Ridge::AssetMediaInfo>> mInfos;
};

}  // namespace ReferenceHost
