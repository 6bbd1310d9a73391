#pragma once

#include <cstddef>
#include <string_view>

/// Every element and attribute name of panel texts and notifications. They cross the wire: exact,
/// case-sensitive, odd spellings included.
namespace AC::Vocabulary {

/// A name or fixed word as the DOM wants it, terminated by zero, and with the length that comparison wants.
class Name
{
public:
    template <std::size_t N>
    constexpr Name(const char16_t (&text)[N]) : mText(text, N - 1)
    {
    }

    constexpr const char16_t* Text() const { return mText.data(); }
    constexpr std::u16string_view View() const { return mText; }

    /// \param text Terminated by zero.
    constexpr bool Equals(const char16_t* text) const
    {
        for (const char16_t unit : mText)
            if (*text++ != unit)
                return false;
        return *text == 0;
    }

private:
    std::u16string_view mText;
};

// Attributes.
constexpr Name kFieldValue = u"fieldValue";
constexpr Name kFtpPassword = u"ftpPassword";
constexpr Name kFtpPort = u"ftpPort";
constexpr Name kFtpServerName = u"ftpServerName";
constexpr Name kFtpUserName = u"ftpUserName";
constexpr Name kID = u"ID";
constexpr Name kMode = u"mode";
constexpr Name kNewName = u"newName";
constexpr Name kOrder = u"order";
constexpr Name kPath = u"path";
constexpr Name kPrefix = u"prefix";
constexpr Name kPreviousColumnName = u"previousColumnName";
constexpr Name kStatus = u"status";
constexpr Name kURI = u"URI";

// Attributes in one place, elements in another.
constexpr Name kDst = u"dst";
constexpr Name kDstParent = u"dstParent";
constexpr Name kItemName = u"name";  // not AC::kName, which is the host's
constexpr Name kSrc = u"src";

// The header.
constexpr Name kBrowserID = u"browserID";
constexpr Name kMsgID = u"msgID";
constexpr Name kTaskID = u"taskID";

// Children of the root: scalars.
constexpr Name kAllowExit = u"allowExit";
constexpr Name kBatchID = u"batchID";
constexpr Name kClipFormat = u"clipFormat";
constexpr Name kCurrentWorkMode = u"currentWorkMode";
constexpr Name kDeleteOnDisk = u"deleteOnDisk";
constexpr Name kErrorInfo = u"errorInfo";
constexpr Name kFileContent = u"fileContent";
constexpr Name kFilePath = u"filePath";
constexpr Name kHost = u"host";
constexpr Name kInstalled = u"installed";
constexpr Name kMediaUseLocalFile = u"mediaUseLocalFile";
constexpr Name kOutputDirectory = u"outputDirectory";
constexpr Name kOutputFileName = u"outputFileName";
constexpr Name kOutputFilePath = u"outputFilePath";
constexpr Name kOutputXMP = u"outputXMP";
constexpr Name kPercentage = u"percentage";
constexpr Name kPresetPath = u"presetPath";
constexpr Name kResult = u"result";
constexpr Name kRoughCutUseLocalFile = u"roughCutUseLocalFile";
constexpr Name kTagTemplateOption = u"tagTemplateOption";
constexpr Name kTargetBin = u"targetBin";
constexpr Name kTaskItemID = u"taskItemID";
constexpr Name kTransferOption = u"transferOption";
constexpr Name kTransferType = u"transferType";

// Children of the root: blocks and lists.
constexpr Name kActionResultList = u"actionResultList";
constexpr Name kAssetItemList = u"assetItemList";
constexpr Name kAssetMediaInfoList = u"assetMediaInfoList";
constexpr Name kCommandList = u"commandList";
constexpr Name kConcatenationItemList = u"concatenationItemList";
constexpr Name kCustomMetadata = u"customMetadata";
constexpr Name kDeleteDynamicColumns = u"deleteDynamicColumns";
constexpr Name kDynamicColumnFieldValues = u"dynamicColumnFieldValues";
constexpr Name kEvent = u"event";
constexpr Name kExportResultInfo = u"exportResultInfo";
constexpr Name kFileInfoList = u"fileInfoList";
constexpr Name kFileList = u"fileList";
constexpr Name kFtpSetting = u"ftpSetting";
constexpr Name kIngestItemList = u"ingestItemList";
constexpr Name kIngestMediaItemList = u"ingestMediaItemList";
constexpr Name kMarkerInfoList = u"markerInfoList";
constexpr Name kMediaPropertyInfo = u"mediaPropertyInfo";
constexpr Name kNewDynamicColumns = u"newDynamicColumns";
constexpr Name kRenameItemList = u"renameItemList";
constexpr Name kSelectedItemInfoList = u"selectedItemInfoList";
constexpr Name kTagTemplateInfoList = u"tagTemplateInfoList";
constexpr Name kTagTemplateResultList = u"tagTemplateResultList";
constexpr Name kTaskIDList = u"taskIDList";
constexpr Name kThumbnailRequest = u"thumbnailRequest";
constexpr Name kTranscodeItemList = u"transcodeItemList";
constexpr Name kTransferItemList = u"transferItemList";

// Items of lists.
constexpr Name kActionResult = u"actionResult";
constexpr Name kAssetItem = u"assetItem";
constexpr Name kAssetMediaInfo = u"assetMediaInfo";
constexpr Name kCommand = u"command";
constexpr Name kConcatenationItem = u"concatenationItem";
constexpr Name kDynamicColumn = u"dynamicColumn";
constexpr Name kDynamicColumnFieldValue = u"dynamicColumnFieldValue";
constexpr Name kExtraPath = u"extraPath";
constexpr Name kFileInfo = u"fileInfo";
constexpr Name kIngestItem = u"ingestItem";
constexpr Name kIngestMediaItem = u"ingestMediaItem";
constexpr Name kKeyword = u"keyword";
constexpr Name kMarkerInfo = u"markerInfo";
constexpr Name kNamespace = u"namespace";
constexpr Name kRenameItem = u"renameItem";
constexpr Name kSelectedItemInfo = u"selectedItemInfo";
constexpr Name kTagTemplateInfo = u"tagTemplateInfo";
constexpr Name kTagTemplateResult = u"tagTemplateResult";
constexpr Name kTranscodeItem = u"transcodeItem";
constexpr Name kTransferItem = u"transferItem";

// Children of items and blocks.
constexpr Name kAliasName = u"aliasName";
constexpr Name kApplyToAllDestinations = u"applyToAllDestinations";
constexpr Name kAssetID = u"assetID";
constexpr Name kAssetMetadata = u"assetMetadata";
constexpr Name kClipItemID = u"clipItemID";
constexpr Name kClipPath = u"clipPath";
constexpr Name kCopyToFolder = u"copyToFolder";
constexpr Name kCustomInPoint = u"customInPoint";
constexpr Name kCustomOutPoint = u"customOutPoint";
constexpr Name kItemDuration = u"duration";  // not AC::kDuration
constexpr Name kErrorMessage = u"errorMessage";
constexpr Name kEventString = u"eventString";
constexpr Name kEventType = u"eventType";
constexpr Name kExtraMediaPath = u"extraMediaPath";
constexpr Name kExtraPathList = u"extraPathList";
constexpr Name kFileCreationTime = u"fileCreationTime";
constexpr Name kFileLastModificationTime = u"fileLastModificationTime";
constexpr Name kFileMetadata = u"fileMetadata";
constexpr Name kForceLoadFromLoalDisk = u"forceLoadFromLoalDisk";
constexpr Name kFrameRate = u"frameRate";
constexpr Name kIsCopy = u"isCopy";
constexpr Name kIsVerify = u"isVerify";
constexpr Name kKeywords = u"keywords";
constexpr Name kLibraryMetadata = u"libraryMetadata";
constexpr Name kMarker = u"marker";
constexpr Name kMarkerID = u"markerID";
constexpr Name kMediaInfoID = u"mediaInfoID";
constexpr Name kMinimumMetadata = u"minimumMetadata";
constexpr Name kNtsc = u"ntsc";
constexpr Name kOwnerClipPath = u"ownerClipPath";
constexpr Name kParentAssetID = u"parentAssetID";
constexpr Name kProjectFile = u"projectFile";
constexpr Name kProjectType = u"projectType";
constexpr Name kRate = u"rate";
constexpr Name kRelativePath = u"relativePath";
constexpr Name kShowMessage = u"showMessage";
constexpr Name kStartTime = u"startTime";
constexpr Name kStoreEmptyInfo = u"storeEmptyInfo";
constexpr Name kSubClipInfo = u"subClipInfo";
constexpr Name kTagTemplateInfoContent = u"tagTemplateInfoContent";
constexpr Name kTagTemplateInfoID = u"tagTemplateInfoID";
constexpr Name kThumbPath = u"thumbPath";
constexpr Name kTimebase = u"timebase";
constexpr Name kType = u"type";
constexpr Name kVerifyMode = u"verifyMode";
constexpr Name kXmp = u"xmp";

}  // namespace AC::Vocabulary
