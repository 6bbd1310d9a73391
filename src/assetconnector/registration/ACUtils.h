#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/message/ACMessage.h"

/// Helpers between decoded messages and the host's project. Any thread; asset items are changed, so the host
/// keeps other threads from those that a record carries. What a host operation throws travels untouched, and
/// the steps behind it are not made.
namespace AC::ACUtils {

/// Decodes a panel's text and registers its assets with the project. Where the text says
/// roughCutUseLocalFile, every item is first given a media info: a known one by GUID, else by path, else a
/// new one, appended to the record's list. Where it does not say mediaUseLocalFile, the database metadata
/// provider is registered, in general and for the path of each master clip.
/// \param message A fresh record; holds afterwards what was decoded and made.
/// \return false when the text does not decode: the record is untouched and nothing is registered.
/// \throws As ACMessageDecoder::DecodeXMLString.
AC_API bool DecodeXMLAndRegisterMediaInfo(const UTF16String& xml, ACMessage& message);

/// Hands the record's lists and its two flags to the host's library support.
/// \param firstFlag, secondFlag Passed through to Ridge::SRLibrarySupport::RegisterAssetMediaInfoToSRCore.
/// \throws std::logic_error without an installed host; what the host throws.
AC_API void RegisterAssetMediaInfoToSRCore(const ACMessage& message, bool firstFlag, bool secondFlag);

/// \return The result name of a host code: "ERROR" for every code without a name of its own.
AC_API UTF16String GetResultString(int code);

}  // namespace AC::ACUtils
