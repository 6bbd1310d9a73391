#pragma once

#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/ErrorRecord.h"
#include "assetconnector/message/ACMessage.h"

#include <cstddef>
#include <tuple>
#include <type_traits>

/// The description of every record: its members with their names, in their order. Session files in both
/// directions, comparison and random tests follow from it; a new member of a record needs one line here.
namespace AC::Description {

template <class Record, class Member>
struct MemberRow
{
    using Type = Member;

    const char* name;
    Member Record::*member;
};

template <class Record, class Member>
constexpr MemberRow<Record, Member> Row(const char* name, Member Record::*member)
{
    return {name, member};
}

/// Specialised for each record: a tuple kRows of MemberRow.
template <class Record>
struct Members;

template <class Record, class = void>
struct IsDescribed : std::false_type
{
};
template <class Record>
struct IsDescribed<Record, std::void_t<decltype(Members<Record>::kRows)>> : std::true_type
{
};

/// \return The size of a struct of exactly the described members, in their order.
template <class Record>
constexpr std::size_t SizeOfMembers()
{
    std::size_t size = 0;
    std::size_t alignment = 1;
    const auto place = [&](std::size_t memberSize, std::size_t memberAlignment) {
        size = (size + memberAlignment - 1) / memberAlignment * memberAlignment + memberSize;
        alignment = memberAlignment > alignment ? memberAlignment : alignment;
    };
    std::apply(
        [&](const auto&... row) {
            (place(sizeof(typename std::decay_t<decltype(row)>::Type),
                   alignof(typename std::decay_t<decltype(row)>::Type)),
             ...);
        },
        Members<Record>::kRows);
    return (size + alignment - 1) / alignment * alignment;
}

/// Calls visit(row) for each member of the record, in order. A member without a row does not compile, unless
/// it is small enough to hide between others.
template <class Record, class Visit>
void ForEachMember(Visit&& visit)
{
    static_assert(SizeOfMembers<Record>() == sizeof(Record), "a member has no row, or rows are out of order");
    std::apply([&visit](const auto&... row) { (visit(row), ...); }, Members<Record>::kRows);
}

template <>
struct Members<ACMessageHeader>
{
    using R = ACMessageHeader;
    static constexpr auto kRows =
        std::make_tuple(Row("browserID", &R::browserID), Row("taskID", &R::taskID), Row("msgID", &R::msgID));
};

template <>
struct Members<ThumbnailRequest>
{
    using R = ThumbnailRequest;
    static constexpr auto kRows =
        std::make_tuple(Row("assetID", &R::assetID), Row("clipPath", &R::clipPath),
                        Row("thumbPath", &R::thumbPath), Row("startTime", &R::startTime));
};

template <>
struct Members<EventInfo>
{
    using R = EventInfo;
    static constexpr auto kRows =
        std::make_tuple(Row("eventType", &R::eventType), Row("eventString", &R::eventString),
                        Row("showMessage", &R::showMessage));
};

template <>
struct Members<FtpSetting>
{
    using R = FtpSetting;
    static constexpr auto kRows =
        std::make_tuple(Row("ftpServerName", &R::ftpServerName), Row("ftpPort", &R::ftpPort),
                        Row("ftpUserName", &R::ftpUserName), Row("ftpPassword", &R::ftpPassword));
};

template <>
struct Members<RenameItem>
{
    using R = RenameItem;
    static constexpr auto kRows = std::make_tuple(Row("src", &R::src), Row("newName", &R::newName));
};

template <>
struct Members<IngestMediaSettings>
{
    using R = IngestMediaSettings;
    static constexpr auto kRows = std::make_tuple(
        Row("items", &R::items), Row("isCopy", &R::isCopy), Row("copyToFolder", &R::copyToFolder),
        Row("isVerify", &R::isVerify), Row("verifyMode", &R::verifyMode));
};

template <>
struct Members<MediaPropertyInfo>
{
    using R = MediaPropertyInfo;
    static constexpr auto kRows = std::make_tuple(
        Row("assetID", &R::assetID), Row("filePath", &R::filePath), Row("frameRate", &R::frameRate),
        Row("startTime", &R::startTime), Row("duration", &R::duration));
};

template <>
struct Members<ExportResultInfo>
{
    using R = ExportResultInfo;
    static constexpr auto kRows =
        std::make_tuple(Row("projectFile", &R::projectFile), Row("projectType", &R::projectType));
};

template <>
struct Members<TagTemplateResult>
{
    using R = TagTemplateResult;
    static constexpr auto kRows =
        std::make_tuple(Row("tagTemplateInfoID", &R::tagTemplateInfoID), Row("result", &R::result));
};

template <>
struct Members<SubClipInfo>
{
    using R = SubClipInfo;
    static constexpr auto kRows =
        std::make_tuple(Row("frameRate", &R::frameRate), Row("startTime", &R::startTime),
                        Row("duration", &R::duration), Row("markerID", &R::markerID));
};

template <>
struct Members<SelectedItemInfo>
{
    using R = SelectedItemInfo;
    static constexpr auto kRows =
        std::make_tuple(Row("filePath", &R::filePath), Row("aliasName", &R::aliasName), Row("type", &R::type),
                        Row("extraMediaPath", &R::extraMediaPath), Row("subClipInfo", &R::subClipInfo),
                        Row("assetID", &R::assetID));
};

template <>
struct Members<MarkerInfo>
{
    using R = MarkerInfo;
    static constexpr auto kRows = std::make_tuple(Row("ownerClipPath", &R::ownerClipPath),
                                                  Row("frameRate", &R::frameRate), Row("marker", &R::marker));
};

template <>
struct Members<Ridge::ErrorRecord>
{
    using R = Ridge::ErrorRecord;
    static constexpr auto kRows = std::make_tuple(Row("message", &R::message));
};

template <>
struct Members<Ridge::ActionResult>
{
    using R = Ridge::ActionResult;
    static constexpr auto kRows =
        std::make_tuple(Row("assetID", &R::assetID), Row("filePath", &R::filePath), Row("result", &R::result),
                        Row("errorMessage", &R::errorMessage), Row("fileCreationTime", &R::fileCreationTime),
                        Row("fileLastModificationTime", &R::fileLastModificationTime));
};

template <>
struct Members<Ridge::TransferResult>
{
    using R = Ridge::TransferResult;
    static constexpr auto kRows =
        std::make_tuple(Row("src", &R::src), Row("dst", &R::dst), Row("result", &R::result),
                        Row("errorMessage", &R::errorMessage));
};

template <>
struct Members<Ridge::FileInfo>
{
    using R = Ridge::FileInfo;
    static constexpr auto kRows =
        std::make_tuple(Row("assetID", &R::assetID), Row("filePath", &R::filePath),
                        Row("fileLastModificationTime", &R::fileLastModificationTime));
};

template <>
struct Members<Ridge::IngestItem>
{
    using R = Ridge::IngestItem;
    static constexpr auto kRows = std::make_tuple(
        Row("filePath", &R::filePath), Row("aliasName", &R::aliasName), Row("clipFormat", &R::clipFormat),
        Row("extraPathList", &R::extraPathList), Row("startTime", &R::startTime), Row("endTime", &R::endTime),
        Row("frameRate", &R::frameRate));
};

template <>
struct Members<Ridge::TransferItem>
{
    using R = Ridge::TransferItem;
    static constexpr auto kRows =
        std::make_tuple(Row("src", &R::src), Row("dst", &R::dst), Row("dstIsParent", &R::dstIsParent));
};

template <>
struct Members<Ridge::TranscodeItem>
{
    using R = Ridge::TranscodeItem;
    static constexpr auto kRows = std::make_tuple(
        Row("filePath", &R::filePath), Row("frameRate", &R::frameRate), Row("startTime", &R::startTime),
        Row("duration", &R::duration), Row("outputFileName", &R::outputFileName));
};

template <>
struct Members<Ridge::ConcatenationItem>
{
    using R = Ridge::ConcatenationItem;
    static constexpr auto kRows =
        std::make_tuple(Row("filePath", &R::filePath), Row("frameRate", &R::frameRate),
                        Row("startTime", &R::startTime), Row("duration", &R::duration));
};

template <>
struct Members<Ridge::TagTemplateMessageInfo>
{
    using R = Ridge::TagTemplateMessageInfo;
    static constexpr auto kRows = std::make_tuple(Row("tagTemplateInfoID", &R::tagTemplateInfoID),
                                                  Row("tagTemplateInfoContent", &R::tagTemplateInfoContent));
};

template <>
struct Members<Ridge::NamespaceMetadata>
{
    using R = Ridge::NamespaceMetadata;
    static constexpr auto kRows =
        std::make_tuple(Row("URI", &R::URI), Row("prefix", &R::prefix), Row("properties", &R::properties));
};

template <>
struct Members<Ridge::MinimumMetadata>
{
    using R = Ridge::MinimumMetadata;
    static constexpr auto kRows = std::make_tuple(
        Row("namespaces", &R::namespaces), Row("keywords", &R::keywords),
        Row("storeEmptyInfo", &R::storeEmptyInfo), Row("applyToAllDestinations", &R::applyToAllDestinations));
};

template <>
struct Members<Ridge::CustomMetadata>
{
    using R = Ridge::CustomMetadata;
    static constexpr auto kRows = std::make_tuple(Row("minimumMetadata", &R::minimumMetadata));
};

template <>
struct Members<Ridge::AssetMediaInfoValues>
{
    using R = Ridge::AssetMediaInfoValues;
    static constexpr auto kRows = std::make_tuple(
        Row("assetMediaType", &R::assetMediaType), Row("assetMediaInfoGUID", &R::assetMediaInfoGUID),
        Row("mediaPath", &R::mediaPath), Row("xmpString", &R::xmpString), Row("fileContent", &R::fileContent),
        Row("customMetadata", &R::customMetadata), Row("createTime", &R::createTime),
        Row("lastModifyTime", &R::lastModifyTime), Row("rateTimeBase", &R::rateTimeBase),
        Row("rateNtsc", &R::rateNtsc), Row("aliasName", &R::aliasName),
        Row("forceLoadFromLocalDisk", &R::forceLoadFromLocalDisk),
        Row("needSavePreCheck", &R::needSavePreCheck));
};

template <>
struct Members<Ridge::AssetItemValues>
{
    using R = Ridge::AssetItemValues;
    static constexpr auto kRows = std::make_tuple(
        Row("assetMediaType", &R::assetMediaType), Row("mediaPath", &R::mediaPath),
        Row("assetGUID", &R::assetGUID), Row("parentGUID", &R::parentGUID),
        Row("assetMediaInfoGUID", &R::assetMediaInfoGUID), Row("assetName", &R::assetName),
        Row("assetMetadata", &R::assetMetadata), Row("inPoint", &R::inPoint), Row("duration", &R::duration),
        Row("customInPoint", &R::customInPoint), Row("customOutPoint", &R::customOutPoint),
        Row("assetClipItemGuid", &R::assetClipItemGuid), Row("assetMarkerGuid", &R::assetMarkerGuid),
        Row("parentBinPath", &R::parentBinPath), Row("subAssetItemList", &R::subAssetItemList));
};

template <>
struct Members<ACMessage>
{
    using R = ACMessage;
    static constexpr auto kRows = std::make_tuple(
        Row("header", &R::header), Row("assetMediaInfoList", &R::assetMediaInfoList),
        Row("assetItemList", &R::assetItemList), Row("saveFlag", &R::saveFlag), Row("filePath", &R::filePath),
        Row("clipFormat", &R::clipFormat), Row("taskItemID", &R::taskItemID), Row("batchID", &R::batchID),
        Row("errorInfo", &R::errorInfo), Row("fileContent", &R::fileContent),
        Row("mediaUseLocalFile", &R::mediaUseLocalFile),
        Row("roughCutUseLocalFile", &R::roughCutUseLocalFile), Row("deleteOnDisk", &R::deleteOnDisk),
        Row("result", &R::result), Row("ingestItemList", &R::ingestItemList), Row("fileList", &R::fileList),
        Row("percentage", &R::percentage), Row("thumbnailRequest", &R::thumbnailRequest),
        Row("allowExit", &R::allowExit), Row("taskIDList", &R::taskIDList),
        Row("actionResultList", &R::actionResultList), Row("commandList", &R::commandList),
        Row("host", &R::host), Row("fileInfoList", &R::fileInfoList),
        Row("customMetadata", &R::customMetadata), Row("event", &R::event),
        Row("transferItemList", &R::transferItemList), Row("transferOption", &R::transferOption),
        Row("ftpSetting", &R::ftpSetting), Row("transferType", &R::transferType),
        Row("renameItemList", &R::renameItemList), Row("ingestMediaItemList", &R::ingestMediaItemList),
        Row("transferResultList", &R::transferResultList),
        Row("selectedItemInfoList", &R::selectedItemInfoList),
        Row("mediaPropertyInfo", &R::mediaPropertyInfo), Row("targetBin", &R::targetBin),
        Row("presetPath", &R::presetPath), Row("outputDirectory", &R::outputDirectory),
        Row("outputFileName", &R::outputFileName), Row("transcodeItemList", &R::transcodeItemList),
        Row("concatenationItemList", &R::concatenationItemList), Row("outputFilePath", &R::outputFilePath),
        Row("outputXMP", &R::outputXMP), Row("newDynamicColumns", &R::newDynamicColumns),
        Row("previousColumnNames", &R::previousColumnNames),
        Row("deleteDynamicColumns", &R::deleteDynamicColumns),
        Row("dynamicColumnFieldValues", &R::dynamicColumnFieldValues),
        Row("exportResultInfo", &R::exportResultInfo), Row("currentWorkMode", &R::currentWorkMode),
        Row("installed", &R::installed), Row("tagTemplateInfoList", &R::tagTemplateInfoList),
        Row("tagTemplateResultList", &R::tagTemplateResultList),
        Row("tagTemplateOption", &R::tagTemplateOption), Row("markerInfoList", &R::markerInfoList),
        Row("requestContext", &R::requestContext));
    static_assert(std::tuple_size_v<decltype(kRows)> == 55, "the header and 54 members");
};

}  // namespace AC::Description
