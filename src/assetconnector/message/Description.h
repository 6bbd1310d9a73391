#pragma once

#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/ErrorRecord.h"
#include "assetconnector/message/ACMessage.h"
#include "assetconnector/message/DescriptionRows.h"

#include <cstddef>
#include <tuple>
#include <utility>

/// The description of every record: its members with their names, in their order. Session files in both
/// directions, comparison and tests in both directions follow from it; a new member of a record needs one
/// line here.
namespace AC::Description {

template <>
struct Members<ACMessageHeader>
{
    using R = ACMessageHeader;
    static constexpr auto kRows = std::make_tuple(Both("browserID", &R::browserID),
                                                  Both("taskID", &R::taskID), Both("msgID", &R::msgID));
};

template <>
struct Members<ThumbnailRequest>
{
    using R = ThumbnailRequest;
    static constexpr auto kRows =
        std::make_tuple(Both("assetID", &R::assetID), Both("clipPath", &R::clipPath),
                        Both("thumbPath", &R::thumbPath), Both("startTime", &R::startTime));
};

template <>
struct Members<EventInfo>
{
    using R = EventInfo;
    static constexpr auto kRows =
        std::make_tuple(In("eventType", &R::eventType), In("eventString", &R::eventString),
                        In("showMessage", &R::showMessage));
};

template <>
struct Members<FtpSetting>
{
    using R = FtpSetting;
    static constexpr auto kRows =
        std::make_tuple(In("ftpServerName", &R::ftpServerName), In("ftpPort", &R::ftpPort),
                        In("ftpUserName", &R::ftpUserName), In("ftpPassword", &R::ftpPassword));
};

template <>
struct Members<RenameItem>
{
    using R = RenameItem;
    static constexpr auto kRows = std::make_tuple(In("src", &R::src), In("newName", &R::newName));
};

template <>
struct Members<IngestMediaSettings>
{
    using R = IngestMediaSettings;
    static constexpr auto kRows = std::make_tuple(
        In("items", &R::items), In("isCopy", &R::isCopy), In("copyToFolder", &R::copyToFolder),
        In("isVerify", &R::isVerify), In("verifyMode", &R::verifyMode));
};

template <>
struct Members<MediaPropertyInfo>
{
    using R = MediaPropertyInfo;
    static constexpr auto kRows = std::make_tuple(
        Both("assetID", &R::assetID), Both("filePath", &R::filePath), Both("frameRate", &R::frameRate),
        Both("startTime", &R::startTime), Both("duration", &R::duration));
};

template <>
struct Members<ExportResultInfo>
{
    using R = ExportResultInfo;
    static constexpr auto kRows =
        std::make_tuple(Out("projectFile", &R::projectFile), Out("projectType", &R::projectType));
};

template <>
struct Members<TagTemplateResult>
{
    using R = TagTemplateResult;
    static constexpr auto kRows =
        std::make_tuple(Out("tagTemplateInfoID", &R::tagTemplateInfoID), Out("result", &R::result));
};

template <>
struct Members<SubClipInfo>
{
    using R = SubClipInfo;
    static constexpr auto kRows =
        std::make_tuple(Out("frameRate", &R::frameRate), Out("startTime", &R::startTime),
                        Out("duration", &R::duration), Out("markerID", &R::markerID));
};

template <>
struct Members<SelectedItemInfo>
{
    using R = SelectedItemInfo;
    static constexpr auto kRows =
        std::make_tuple(Out("filePath", &R::filePath), Out("aliasName", &R::aliasName), Out("type", &R::type),
                        Out("extraMediaPath", &R::extraMediaPath), Out("subClipInfo", &R::subClipInfo),
                        Out("assetID", &R::assetID));
};

template <>
struct Members<MarkerInfo>  // the rate is the one at which the host writes the marker
{
    using R = MarkerInfo;
    static constexpr auto kRows =
        std::make_tuple(Out("ownerClipPath", &R::ownerClipPath), Neither("frameRate", &R::frameRate),
                        Out("marker", &R::marker));
};

template <>
struct Members<Ridge::ErrorRecord>
{
    using R = Ridge::ErrorRecord;
    static constexpr auto kRows = std::make_tuple(Neither("message", &R::message));
};

template <>
struct Members<Ridge::ActionResult>
{
    using R = Ridge::ActionResult;
    static constexpr auto kRows = std::make_tuple(
        Both("assetID", &R::assetID), Both("filePath", &R::filePath), Both("result", &R::result),
        Both("errorMessage", &R::errorMessage), Both("fileCreationTime", &R::fileCreationTime),
        Both("fileLastModificationTime", &R::fileLastModificationTime));
};

template <>
struct Members<Ridge::TransferResult>
{
    using R = Ridge::TransferResult;
    static constexpr auto kRows =
        std::make_tuple(Out("src", &R::src), Out("dst", &R::dst), Out("result", &R::result),
                        Out("errorMessage", &R::errorMessage));
};

template <>
struct Members<Ridge::FileInfo>
{
    using R = Ridge::FileInfo;
    static constexpr auto kRows =
        std::make_tuple(In("assetID", &R::assetID), In("filePath", &R::filePath),
                        In("fileLastModificationTime", &R::fileLastModificationTime));
};

template <>
struct Members<Ridge::IngestItem>
{
    using R = Ridge::IngestItem;
    static constexpr auto kRows = std::make_tuple(
        Both("filePath", &R::filePath), Both("aliasName", &R::aliasName), Out("clipFormat", &R::clipFormat),
        Out("extraPathList", &R::extraPathList), Out("startTime", &R::startTime), Out("endTime", &R::endTime),
        Out("frameRate", &R::frameRate));
};

template <>
struct Members<Ridge::TransferItem>
{
    using R = Ridge::TransferItem;
    static constexpr auto kRows =
        std::make_tuple(In("src", &R::src), In("dst", &R::dst), In("dstIsParent", &R::dstIsParent));
};

template <>
struct Members<Ridge::TranscodeItem>
{
    using R = Ridge::TranscodeItem;
    static constexpr auto kRows = std::make_tuple(
        In("filePath", &R::filePath), In("frameRate", &R::frameRate), In("startTime", &R::startTime),
        In("duration", &R::duration), In("outputFileName", &R::outputFileName));
};

template <>
struct Members<Ridge::ConcatenationItem>
{
    using R = Ridge::ConcatenationItem;
    static constexpr auto kRows =
        std::make_tuple(In("filePath", &R::filePath), In("frameRate", &R::frameRate),
                        In("startTime", &R::startTime), In("duration", &R::duration));
};

template <>
struct Members<Ridge::TagTemplateMessageInfo>
{
    using R = Ridge::TagTemplateMessageInfo;
    static constexpr auto kRows = std::make_tuple(In("tagTemplateInfoID", &R::tagTemplateInfoID),
                                                  In("tagTemplateInfoContent", &R::tagTemplateInfoContent));
};

template <>
struct Members<Ridge::NamespaceMetadata>
{
    using R = Ridge::NamespaceMetadata;
    static constexpr auto kRows =
        std::make_tuple(Both("URI", &R::URI), Both("prefix", &R::prefix), Both("properties", &R::properties));
};

template <>
struct Members<Ridge::MinimumMetadata>
{
    using R = Ridge::MinimumMetadata;
    static constexpr auto kRows =
        std::make_tuple(Both("namespaces", &R::namespaces), Both("keywords", &R::keywords),
                        Both("storeEmptyInfo", &R::storeEmptyInfo),
                        Both("applyToAllDestinations", &R::applyToAllDestinations));
};

template <>
struct Members<Ridge::CustomMetadata>
{
    using R = Ridge::CustomMetadata;
    static constexpr auto kRows = std::make_tuple(Both("minimumMetadata", &R::minimumMetadata));
};

template <>
struct Members<Ridge::AssetMediaInfoValues>  // the pre-check follows from the flags of the message
{
    using R = Ridge::AssetMediaInfoValues;
    static constexpr auto kRows = std::make_tuple(
        Both("assetMediaType", &R::assetMediaType), Both("assetMediaInfoGUID", &R::assetMediaInfoGUID),
        Both("mediaPath", &R::mediaPath), Both("xmpString", &R::xmpString),
        Both("fileContent", &R::fileContent), Both("customMetadata", &R::customMetadata),
        Both("createTime", &R::createTime), Both("lastModifyTime", &R::lastModifyTime),
        Both("rateTimeBase", &R::rateTimeBase), Both("rateNtsc", &R::rateNtsc),
        Both("aliasName", &R::aliasName), Out("forceLoadFromLocalDisk", &R::forceLoadFromLocalDisk),
        In("needSavePreCheck", &R::needSavePreCheck));
};

template <>
struct Members<Ridge::AssetItemValues>
{
    using R = Ridge::AssetItemValues;
    static constexpr auto kRows = std::make_tuple(
        Both("assetMediaType", &R::assetMediaType), Both("mediaPath", &R::mediaPath),
        Both("assetGUID", &R::assetGUID), Both("parentGUID", &R::parentGUID),
        Both("assetMediaInfoGUID", &R::assetMediaInfoGUID), Both("assetName", &R::assetName),
        Both("assetMetadata", &R::assetMetadata), Both("inPoint", &R::inPoint),
        Both("duration", &R::duration), Both("customInPoint", &R::customInPoint),
        Both("customOutPoint", &R::customOutPoint), Both("assetClipItemGuid", &R::assetClipItemGuid),
        Both("assetMarkerGuid", &R::assetMarkerGuid), Both("parentBinPath", &R::parentBinPath),
        Both("subAssetItemList", &R::subAssetItemList));
};

namespace Detail {

/// \return References to all members of a message, which is no aggregate. Counted by the compiler: does not
///         compile with a name too many or too few.
inline auto TieMembers(const ACMessage& message)
{
    const auto& [m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20,
                 m21, m22, m23, m24, m25, m26, m27, m28, m29, m30, m31, m32, m33, m34, m35, m36, m37, m38,
                 m39, m40, m41, m42, m43, m44, m45, m46, m47, m48, m49, m50, m51, m52, m53, m54, m55] =
        message;
    return std::tie(m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15, m16, m17, m18, m19, m20,
                    m21, m22, m23, m24, m25, m26, m27, m28, m29, m30, m31, m32, m33, m34, m35, m36, m37, m38,
                    m39, m40, m41, m42, m43, m44, m45, m46, m47, m48, m49, m50, m51, m52, m53, m54, m55);
}

}  // namespace Detail

template <>
constexpr std::size_t CountMembers<ACMessage>()
{
    return std::tuple_size_v<decltype(Detail::TieMembers(std::declval<ACMessage>()))>;
}

template <>
struct Members<ACMessage>
{
    using R = ACMessage;
    static constexpr auto kRows = std::make_tuple(
        Both("header", &R::header), Both("assetMediaInfoList", &R::assetMediaInfoList),
        Both("assetItemList", &R::assetItemList), Neither("saveFlag", &R::saveFlag),
        Both("filePath", &R::filePath), Out("clipFormat", &R::clipFormat), Both("taskItemID", &R::taskItemID),
        Both("batchID", &R::batchID), Both("errorInfo", &R::errorInfo), Both("fileContent", &R::fileContent),
        Both("mediaUseLocalFile", &R::mediaUseLocalFile),
        Both("roughCutUseLocalFile", &R::roughCutUseLocalFile), Both("deleteOnDisk", &R::deleteOnDisk),
        Both("result", &R::result), Both("ingestItemList", &R::ingestItemList),
        Both("fileList", &R::fileList), Both("percentage", &R::percentage),
        Both("thumbnailRequest", &R::thumbnailRequest), Both("allowExit", &R::allowExit),
        Both("taskIDList", &R::taskIDList), Both("actionResultList", &R::actionResultList),
        Both("commandList", &R::commandList), Out("host", &R::host), In("fileInfoList", &R::fileInfoList),
        Both("customMetadata", &R::customMetadata), In("event", &R::event),
        In("transferItemList", &R::transferItemList), In("transferOption", &R::transferOption),
        In("ftpSetting", &R::ftpSetting), In("transferType", &R::transferType),
        In("renameItemList", &R::renameItemList), In("ingestMediaItemList", &R::ingestMediaItemList),
        Out("transferResultList", &R::transferResultList),
        Out("selectedItemInfoList", &R::selectedItemInfoList),
        Both("mediaPropertyInfo", &R::mediaPropertyInfo), Both("targetBin", &R::targetBin),
        In("presetPath", &R::presetPath), In("outputDirectory", &R::outputDirectory),
        In("outputFileName", &R::outputFileName), In("transcodeItemList", &R::transcodeItemList),
        In("concatenationItemList", &R::concatenationItemList), Out("outputFilePath", &R::outputFilePath),
        In("outputXMP", &R::outputXMP), In("newDynamicColumns", &R::newDynamicColumns),
        In("previousColumnNames", &R::previousColumnNames),
        In("deleteDynamicColumns", &R::deleteDynamicColumns),
        In("dynamicColumnFieldValues", &R::dynamicColumnFieldValues),
        Out("exportResultInfo", &R::exportResultInfo), Out("currentWorkMode", &R::currentWorkMode),
        Out("installed", &R::installed), In("tagTemplateInfoList", &R::tagTemplateInfoList),
        Out("tagTemplateResultList", &R::tagTemplateResultList),
        In("tagTemplateOption", &R::tagTemplateOption), Out("markerInfoList", &R::markerInfoList),
        Neither("requestContext", &R::requestContext));
};

}  // namespace AC::Description
