#include "assetconnector/connectors/LibraryRequests.h"

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"

namespace AC {
namespace {

using ferrite::utility::Guid;

/// The flag of the connector whose rows these are.
std::atomic<bool>& ReadFromDiskOf(const RequestCall& call)
{
    return static_cast<const LibraryRequestCall&>(call).readFromDisk;
}

void ReadXMPFile(const RequestCall& call, const UTF16String& path, const Guid& asset)
{
    const ACMessage& request = call.request;
    if (call.dispatcher != nullptr)
        call.dispatcher->ReadXMPFile(request.header.taskID, request.header.msgID, path, asset,
                                     request.batchID, request.taskItemID);
}

void ImportXMP(const RequestCall& call)
{
    if (call.request.fileList.empty())
        return;
    ReadFromDiskOf(call) = false;
    ReadXMPFile(call, call.request.fileList.front(), Guid::CreateUnique());
}

void ReadXMPFromDisk(const RequestCall& call)
{
    if (call.request.assetMediaInfoList.empty())
        return;
    const Ridge::AssetMediaInfo& info = *call.request.assetMediaInfoList.front();
    ReadFromDiskOf(call) = true;
    ReadXMPFile(call, info.GetMediaPath(), info.GetAssetMediaInfoGUID());
}

void CompleteImportFile(ALD::IAssetLibraryDispatcher& dispatcher, const ACMessage& request)
{
    if (request.actionResultList.empty())
        return;
    const Ridge::ActionResult& result = *request.actionResultList.front();
    dispatcher.CompleteImportFile(request.header.taskID, request.header.msgID, result.filePath,
                                  request.batchID, request.taskItemID, result.result, result.errorMessage);
}

void CreateThumbnail(ALD::IAssetLibraryDispatcher& dispatcher, const ACMessage& request)
{
    const ThumbnailRequest& thumbnail = request.thumbnailRequest;
    dispatcher.CreateThumbnail(request.header.taskID, request.header.msgID, thumbnail.clipPath,
                               thumbnail.startTime, thumbnail.assetID, request.batchID, request.taskItemID);
}

constexpr RequestRow kRows[] = {
    {&kPlexaEventType_ImportXMP, ImportXMP},
    {&kPlexaEventType_FinishImportFile, Forward<CompleteImportFile>},
    {&kPlexaEventType_RequestThumbnail, Forward<CreateThumbnail>},
    {&kPlexaEventType_ReadXMPFromDisk, ReadXMPFromDisk},
};

}  // namespace

const Table<RequestRow> kLibraryRequests(kRows);

}  // namespace AC
