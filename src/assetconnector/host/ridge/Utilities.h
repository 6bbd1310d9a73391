#pragma once

#include "assetconnector/host/Host.h"
#include "assetconnector/host/ferrite/ImmutableString.h"

/// The ingest library under its own names. Each function forwards to Ridge::IIngestLibrary, where arguments,
/// results and exceptions are stated, and throws std::logic_error without an installed host.
namespace Ridge {

/// The station on which panel events arrive. Pure, any thread. The name stays until the library is unloaded.
AC_API ferrite::utility::ImmutableString GetPlexaStationID();

namespace SRLibrarySupport {

inline ResultCode ReadXMPFromCache(const UTF16String& mediaPath, const XMPText& holder, UTF16String& scratch)
{
    return AC::InstalledHost().ingestLibrary.ReadXMPFromCache(mediaPath, holder, scratch);
}

inline void RegisterAssetMediaInfoToSRCore(const AssetMediaInfoList& infos, const AssetItemList& items,
                                           bool useLocalFile, bool roughCutUseLocalFile, bool firstFlag,
                                           bool secondFlag)
{
    AC::InstalledHost().ingestLibrary.RegisterAssetMediaInfoToSRCore(
        infos, items, useLocalFile, roughCutUseLocalFile, firstFlag, secondFlag);
}

}  // namespace SRLibrarySupport

namespace Utilities {

inline UTF16String CreateCustomMetadataStr(const CustomMetadata& metadata)
{
    return AC::InstalledHost().ingestLibrary.CreateCustomMetadataStr(metadata);
}

inline bool PathSupportsXMP(const UTF16String& path)
{
    return AC::InstalledHost().ingestLibrary.PathSupportsXMP(path);
}

inline void RegisterDBMetadataProvider()
{
    AC::InstalledHost().ingestLibrary.RegisterDBMetadataProvider();
}

inline void RegisterDBMetadataProviderForPath(const UTF16String& normalizedPath)
{
    AC::InstalledHost().ingestLibrary.RegisterDBMetadataProviderForPath(normalizedPath);
}

}  // namespace Utilities
}  // namespace Ridge
