#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/UTF16String.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

/// The containers that requests, callbacks and the message record share, over records that message/
/// defines. Items are shared: copying a list copies the pointers.
namespace AC {

struct ACMessage;
struct FtpSetting;
struct IngestMediaSettings;
struct MediaPropertyInfo;
struct RenameItem;

using RenameItemList = std::vector<RenameItem>;

}  // namespace AC

namespace Ridge {

class AssetItem;
class AssetMediaInfo;
struct ActionResult;
struct ConcatenationItem;
struct CustomMetadata;
struct IngestItem;
struct TagTemplateMessageInfo;
struct TranscodeItem;
struct TransferItem;
struct TransferResult;

using GuidList = std::list<ferrite::utility::Guid>;
using PathList = std::list<UTF16String>;
using AssetMediaInfoList = std::list<boost::shared_ptr<AssetMediaInfo>>;
using AssetItemList = std::list<boost::shared_ptr<AssetItem>>;
using ActionResultList = std::list<boost::shared_ptr<ActionResult>>;
using IngestItemList = std::list<boost::shared_ptr<IngestItem>>;
using TagTemplateInfoList = std::list<boost::shared_ptr<TagTemplateMessageInfo>>;
using TransferResultList = std::list<boost::shared_ptr<TransferResult>>;
using TransferItemList = std::vector<boost::shared_ptr<TransferItem>>;
using TranscodeItemList = std::vector<boost::shared_ptr<TranscodeItem>>;
using ConcatenationItemList = std::vector<boost::shared_ptr<ConcatenationItem>>;

/// Column GUID to a column name or a field value.
using ColumnTexts = std::map<ferrite::utility::Guid, UTF16String>;
using ColumnSet = std::set<ferrite::utility::Guid>;
/// Asset GUID to its field values.
using ColumnFieldValues = std::map<ferrite::utility::Guid, ColumnTexts>;

/// An XMP packet, 8-bit and shared; may be null.
using XMPText = boost::shared_ptr<std::string>;

/// The host's result codes: 0 is success, a negative one a failure.
using ResultCode = std::int32_t;

/// 0x80000000: the general failure.
constexpr auto kFailure = static_cast<ResultCode>(0x80000000U);

}  // namespace Ridge
