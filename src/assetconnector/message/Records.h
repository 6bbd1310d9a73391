#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/ridge/AssetMediaType.h"
#include "assetconnector/host/ridge/RecordLists.h"
#include "assetconnector/host/tempora/Time.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <list>
#include <vector>

/// The records that only messages use. Plain values; a member left at its construction value is absent.
namespace AC {

struct ThumbnailRequest
{
    ferrite::utility::Guid assetID;
    UTF16String clipPath;
    UTF16String thumbPath;
    tempora::TickTime startTime;
};

/// Something that a panel wants reported.
struct EventInfo
{
    UTF16String eventType;  ///< kACMessage_TypeInfo, kACMessage_TypeWarn or kACMessage_TypeError.
    UTF16String eventString;
    bool showMessage = false;
};

struct FtpSetting
{
    UTF16String ftpServerName;
    std::uint32_t ftpPort = 0;
    UTF16String ftpUserName;
    UTF16String ftpPassword;  ///< A secret: never written, printed or logged.
};

struct RenameItem
{
    UTF16String src;
    UTF16String newName;
};

struct IngestMediaSettings
{
    std::vector<UTF16String> items;  ///< A full path, then names relative to its folder.
    UTF16String isCopy = u"NoCopy";
    UTF16String copyToFolder;
    UTF16String isVerify = u"NoVerify";
    UTF16String verifyMode = u"MD5";
};

struct MediaPropertyInfo
{
    ferrite::utility::Guid assetID;
    UTF16String filePath;
    tempora::FrameRate frameRate;
    tempora::TickTime startTime;
    tempora::TickTime duration;
};

struct ExportResultInfo
{
    UTF16String projectFile;
    UTF16String projectType;
};

struct TagTemplateResult
{
    UTF16String tagTemplateInfoID;
    Ridge::ResultCode result = 0;
};

struct SubClipInfo
{
    tempora::FrameRate frameRate;
    tempora::TickTime startTime;
    tempora::TickTime duration;
    UTF16String markerID;
};

struct SelectedItemInfo
{
    UTF16String filePath;
    UTF16String aliasName;
    Ridge::AssetMediaType type = Ridge::AssetMediaType::kUnknown;
    UTF16String extraMediaPath;
    boost::shared_ptr<SubClipInfo> subClipInfo;  ///< May be null; written for a sub-clip alone.
    ferrite::utility::Guid assetID;
};

struct MarkerInfo
{
    UTF16String ownerClipPath;
    tempora::FrameRate frameRate;
    Kiln::InterfaceRef<Keel::IMarker> marker;
};

using SelectedItemInfoList = std::list<boost::shared_ptr<SelectedItemInfo>>;
using TagTemplateResultList = std::list<boost::shared_ptr<TagTemplateResult>>;
using MarkerInfoList = std::list<boost::shared_ptr<MarkerInfo>>;

}  // namespace AC
