#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ridge/RecordLists.h"
#include "assetconnector/host/tempora/Time.h"

#include <map>
#include <set>
#include <vector>

/// Item records of the ingest library, held by shared pointer in a message's lists. Plain values: a member
/// left at its construction value is absent. Not locked.
namespace Ridge {

/// What became of one asset.
struct ActionResult
{
    ferrite::utility::Guid assetID;
    UTF16String filePath;
    ResultCode result = 0;
    UTF16String errorMessage;
    UTF16String fileCreationTime;
    UTF16String fileLastModificationTime;
};

/// What became of one copy from source to destination.
struct TransferResult
{
    UTF16String src;
    UTF16String dst;
    ResultCode result = 0;
    UTF16String errorMessage;
};

struct FileInfo
{
    ferrite::utility::Guid assetID;
    UTF16String filePath;
    UTF16String fileLastModificationTime;
};

/// A file to ingest, or one that was.
struct IngestItem
{
    UTF16String filePath;
    UTF16String aliasName;
    UTF16String clipFormat;
    std::vector<UTF16String> extraPathList;
    tempora::TickTime startTime;
    tempora::TickTime endTime;
    tempora::FrameRate frameRate;
};

struct TransferItem
{
    UTF16String src;
    UTF16String dst;
    bool dstIsParent = false;  ///< dst names the folder to copy into, not the copy itself.
};

struct TranscodeItem
{
    UTF16String filePath;
    tempora::FrameRate frameRate;
    tempora::TickTime startTime;
    tempora::TickTime duration;
    UTF16String outputFileName;
};

struct ConcatenationItem
{
    UTF16String filePath;
    tempora::FrameRate frameRate;
    tempora::TickTime startTime;
    tempora::TickTime duration;
};

struct TagTemplateMessageInfo
{
    UTF16String tagTemplateInfoID;
    UTF16String tagTemplateInfoContent;
};

struct NamespaceMetadata
{
    UTF16String URI;
    UTF16String prefix;
    std::map<UTF16String, UTF16String> properties;  ///< Name to value; a name becomes an element name.
};

using NamespaceMetadataList = std::list<boost::shared_ptr<NamespaceMetadata>>;

struct MinimumMetadata
{
    NamespaceMetadataList namespaces;
    std::set<UTF16String> keywords;
    bool storeEmptyInfo = false;
    bool applyToAllDestinations = false;
};

/// Metadata that the user types in once for everything that an ingest task brings in.
struct CustomMetadata
{
    MinimumMetadata minimumMetadata;
};

using FileInfoList = std::list<boost::shared_ptr<FileInfo>>;

}  // namespace Ridge
