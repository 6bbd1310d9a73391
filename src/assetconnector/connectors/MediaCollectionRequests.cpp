#include "assetconnector/connectors/MediaCollectionRequests.h"

#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestMedia.h"
#include "assetconnector/connectors/SendRoad.h"
#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/loft/Utilities.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/SRProject.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/registration/ACUtils.h"

#include <boost/make_shared.hpp>

#include <cstddef>

namespace AC {
namespace {

using Ridge::AssetMediaInfo;
using Ridge::AssetMediaType;

bool IsMasterOrSubClip(const AssetMediaInfo& info)
{
    const AssetMediaType type = info.GetAssetMediaType();
    return type == AssetMediaType::kMasterClip || type == AssetMediaType::kSubClip;
}

/// Appends a copy of what the panel sent, with another XMP packet, unless the host makes none.
/// \return Whether it was appended.
bool AppendWithXMP(const AssetMediaInfo& sent, const Ridge::XMPText& xmp, ACMessage& reply)
{
    const boost::shared_ptr<AssetMediaInfo> info = AssetMediaInfo::Create(
        sent.GetAssetMediaType(), sent.GetAssetMediaInfoGUID(), sent.GetMediaPath(), xmp,
        sent.GetFileContent(), sent.GetCustomMetadata(), sent.GetCreateTime(), sent.GetLastModifyTime(),
        sent.GetRateTimeBase(), sent.GetRateNtsc(), sent.GetAliasName(), false, UTF16String());
    if (info)
        reply.assetMediaInfoList.push_back(info);
    return info != nullptr;
}

/// \return What the project knows of the path, or null.
boost::shared_ptr<AssetMediaInfo> FindInProject(const UTF16String& mediaPath)
{
    const boost::shared_ptr<Ridge::SRProject> project = Ridge::SRProject::GetInstance();
    return project ? project->GetAssetMediaInfo(mediaPath, false) : boost::shared_ptr<AssetMediaInfo>();
}

/// \return An empty reply to the media collection panel with this result.
ACMessage ReplyTo(const ACMessage& request, const UTF16String& result)
{
    ACMessage reply;
    reply.header.Set(request.header.taskID, request.header.msgID, kNativeBrowserID);
    reply.result = result;
    return reply;
}

void ReadXMPFromProject(const RequestCall& call)
{
    ACMessage reply = ReplyTo(call.request, kACMessage_ResultFailure);
    if (!call.request.assetMediaInfoList.empty()) {
        const AssetMediaInfo& sent = *call.request.assetMediaInfoList.front();
        if (Ridge::Utilities::PathSupportsXMP(sent.GetMediaPath()) && IsMasterOrSubClip(sent))
            if (const auto known = FindInProject(sent.GetMediaPath()))
                if (AppendWithXMP(sent, known->GetXMPString(), reply))
                    reply.result = kACMessage_ResultOK;
    }
    Send(*call.row.reply, reply, Encoding::kDecoded);
}

/// \return Whether the packet could be read.
bool ReadFromDisk(const AssetMediaInfo& sent, ACMessage& reply)
{
    if (!IsMasterOrSubClip(sent))
        return false;
    const auto holder = boost::make_shared<std::string>();
    UTF16String scratch;
    if (Ridge::SRLibrarySupport::ReadXMPFromCache(sent.GetMediaPath(), holder, scratch) < 0)
        return false;
    AppendWithXMP(sent, holder, reply);
    return true;
}

void ReadXMPFromDisk(const RequestCall& call)
{
    ACMessage reply = ReplyTo(call.request, kACMessage_ResultOK);
    for (const auto& sent : call.request.assetMediaInfoList)
        if (!ReadFromDisk(*sent, reply))
            reply.result = kACMessage_ResultFailure;
    Send(*call.row.reply, reply, Encoding::kDecoded);
}

/// \return 0, 1 or 2 for an information, a warning, an error; 0 for any other type.
std::int32_t ReportLevel(const UTF16String& eventType)
{
    static constexpr const UTF16String* kLevels[] = {&kACMessage_TypeInfo, &kACMessage_TypeWarn,
                                                     &kACMessage_TypeError};
    for (std::size_t level = 0; level < std::size(kLevels); ++level)
        if (EqualsIgnoringCase(eventType, *kLevels[level]))
            return static_cast<std::int32_t>(level);
    return 0;
}

void ReportPanelEvent(ALD::IAssetLibraryDispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.ReportPanelEvent(request.header.taskID, request.header.msgID,
                                ReportLevel(request.event.eventType), request.event.eventString,
                                request.event.showMessage);
}

void SaveAssetItems(ALD::IAssetLibraryDispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.SaveAssetItems(request.header.taskID, request.header.msgID, request.assetItemList);
}

void ExportAssets(ALD::IAssetLibraryDispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.ExportAssets(request.header.taskID, request.header.msgID, request.assetItemList,
                            request.assetMediaInfoList);
}

void PostToProject(const Kiln::Message& message)
{
    Kiln::StationUtils::PostMessageToUIThread(Loft::kStation_BriselProject, message, false);
}

void InsertDynamicColumns(const RequestCall& call)
{
    PostToProject(Ridge::InsertDynamicColumnsMessage(
        {call.request.newDynamicColumns, call.request.previousColumnNames}));
}

void DeleteDynamicColumns(const RequestCall& call)
{
    PostToProject(Ridge::DeleteDynamicColumnsMessage(call.request.deleteDynamicColumns));
}

void UpdateDynamicColumnFields(const RequestCall& call)
{
    PostToProject(Ridge::UpdateDynamicColumnFieldsMessage(call.request.dynamicColumnFieldValues));
}

constexpr RequestRow kRows[] = {
    {&kPlexaEventType_ReadXMPFromDisk, ReadXMPFromDisk, &kPlexaEventType_NotificationReadXMPFromDiskStatus},
    {&kPlexaEventType_ReadXMPFromCache, ReadXMPFromProject,
     &kPlexaEventType_NotificationReadXMPFromCacheStatus},
    {&kPlexaEventType_ReportEvent, Forward<ReportPanelEvent>},
    {&kPlexaEventType_TriggerSaveAsset, Forward<SaveAssetItems>},
    {&kPlexaEventType_ExportAsset, Forward<ExportAssets>, nullptr, &ACUtils::DecodeXMLAndRegisterMediaInfo},
    {&kPlexaEventType_IngestMedia, IngestMedia, &kPlexaEventType_NotificationIngestMediaStatus},
    {&kPlexaEventType_InsertDynamicColumns, InsertDynamicColumns},
    {&kPlexaEventType_DeleteDynamicColumns, DeleteDynamicColumns},
    {&kPlexaEventType_UpdateDynamicColumnFields, UpdateDynamicColumnFields},
};

}  // namespace

const Table<RequestRow> kMediaCollectionRequests(kRows);

}  // namespace AC
