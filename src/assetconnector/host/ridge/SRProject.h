#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ridge/RecordLists.h"

namespace Ridge {

/// The project's registry of assets and media. Implemented by the host, called by connectors and by media
/// registration on any thread, several at once. What an operation throws travels untouched.
class AC_API SRProject
{
public:
    virtual ~SRProject();

    /// \return The one registry; null when no project is open: nothing is known, nothing is registered.
    /// \throws std::logic_error without an installed host; whatever the host throws.
    static boost::shared_ptr<SRProject> GetInstance();

    /// \param reservedFlag False at every call of the library.
    /// \return The registered info of the path, or null.
    virtual boost::shared_ptr<AssetMediaInfo> GetAssetMediaInfo(const UTF16String& mediaPath,
                                                                bool reservedFlag) = 0;

    /// Gives the registered info of the path, if there is one, a new XMP packet.
    virtual void RefreshAssetMediaInfoByPath(const UTF16String& mediaPath, const XMPText& xmp) = 0;

    /// Registers both lists. Null entries are skipped. \param firstFlag, secondFlag False at every call.
    virtual void RegisterAssetMediaInfoList(const AssetItemList& items, const AssetMediaInfoList& infos,
                                            bool firstFlag, bool secondFlag) = 0;
};

}  // namespace Ridge
