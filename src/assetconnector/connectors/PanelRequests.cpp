#include "assetconnector/connectors/PanelRequests.h"

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/SendRoad.h"

namespace AC {
namespace {

using Dispatcher = ALD::IAssetLibraryDispatcher;

void ShowIngestDialog(Dispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.ShowIngestDialog(request.header.taskID, request.header.msgID, request.targetBin);
}

/// The connector does not learn whether the dialog opened: the reply says "OK".
void OpenIngestDialog(const RequestCall& call)
{
    Forward<ShowIngestDialog>(call);
    ACMessage reply;
    reply.header = call.request.header;
    reply.result = kACMessage_ResultOK;
    Send(*call.row.reply, reply, Encoding::kPlain);
}

void WriteXMPFile(Dispatcher& dispatcher, const ACMessage& request)
{
    if (!request.assetMediaInfoList.empty())
        dispatcher.WriteXMPFile(request.header.taskID, request.header.msgID,
                                request.assetMediaInfoList.front());
}

void RefuseExit(Dispatcher& dispatcher, const ACMessage& request)
{
    if (request.allowExit == kACMessage_False)
        dispatcher.RefuseExit(Ridge::kFailure);
}

void StartTransfer(Dispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.StartTransfer(request.header.taskID, request.header.msgID, request.transferItemList,
                             request.transferOption, request.ftpSetting, request.transferType);
}

void RenameItems(Dispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.RenameItems(request.header.taskID, request.header.msgID, request.renameItemList);
}

void QueryMediaPropertyInfo(Dispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.QueryMediaPropertyInfo(request.header.taskID, request.header.msgID,
                                      request.mediaPropertyInfo.filePath, request.mediaPropertyInfo.assetID);
}

void QueryAssociatedFiles(Dispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.QueryAssociatedFiles(request.header.taskID, request.header.msgID, request.filePath);
}

void StartTranscode(Dispatcher& dispatcher, const ACMessage& request)
{
    if (!request.transcodeItemList.empty())
        dispatcher.StartTranscode(request.header.taskID, request.header.msgID, request.presetPath,
                                  request.outputDirectory, request.outputXMP, request.transcodeItemList);
}

void StartConcatenation(Dispatcher& dispatcher, const ACMessage& request)
{
    if (!request.concatenationItemList.empty())
        dispatcher.StartConcatenation(request.header.taskID, request.header.msgID, request.presetPath,
                                      request.outputDirectory, request.outputFileName, request.outputXMP,
                                      request.concatenationItemList);
}

void ApplyTagTemplate(Dispatcher& dispatcher, const ACMessage& request)
{
    dispatcher.ApplyTagTemplate(request.header.taskID, request.header.msgID, request.tagTemplateInfoList,
                                request.tagTemplateOption);
}

/// For operations that take the task and the message alone.
template <void (Dispatcher::*operation)(const ferrite::utility::Guid& task,
                                        const ferrite::utility::Guid& message)>
void PassOn(Dispatcher& dispatcher, const ACMessage& request)
{
    (dispatcher.*operation)(request.header.taskID, request.header.msgID);
}

constexpr RequestRow kSharedRows[] = {
    {&kPlexaEventType_OpenIngestDlg, OpenIngestDialog, &kPlexaEventType_NotificationOpenIngestDlgStatus},
    {&kPlexaEventType_WriteXMPToDisk, Forward<WriteXMPFile>},
    {&kPlexaEventType_ExitApp, Forward<RefuseExit>},
    {&kPlexaEventType_TransferRequest, Forward<StartTransfer>},
    {&kPlexaEventType_TransferCancel, Forward<PassOn<&Dispatcher::CancelTransfer>>},
    {&kPlexaEventType_RenameRequest, Forward<RenameItems>},
    {&kPlexaEventType_GetMediaPropertyInfo, Forward<QueryMediaPropertyInfo>},
    {&kPlexaEventType_TranscodeRequest, Forward<StartTranscode>},
    {&kPlexaEventType_ConcatenationRequest, Forward<StartConcatenation>},
    {&kPlexaEventType_TranscodeCancel, Forward<PassOn<&Dispatcher::CancelTranscode>>},
    {&kPlexaEventType_ConcatenationCancel, Forward<PassOn<&Dispatcher::CancelConcatenation>>},
    {&kPlexaEventType_GetAssociatedFiles, Forward<QueryAssociatedFiles>},
    {&kPlexaEventType_GetCurrentWorkMode, Forward<PassOn<&Dispatcher::QueryCurrentWorkMode>>},
    {&kPlexaEventType_IsMontaneInstalled, Forward<PassOn<&Dispatcher::QueryMontaneInstalled>>},
    {&kPlexaEventType_SendTagTemplate, Forward<ApplyTagTemplate>},
};
constexpr Table<RequestRow> kSharedRequests(kSharedRows);

/// \return The first row that fits, in either table, or null.
template <class Fits>
const RequestRow* FindRow(const Table<RequestRow>& own, Fits fits)
{
    for (const Table<RequestRow>& table : {own, kSharedRequests})
        for (const RequestRow& row : table)
            if (fits(row))
                return &row;
    return nullptr;
}

}  // namespace

const RequestRow* FindRequest(const Table<RequestRow>& own, const UTF16String& type)
{
    return FindRow(own, [&type](const RequestRow& row) { return *row.identifier == type; });
}

bool HandlesRequestOrReply(const Table<RequestRow>& own, const UTF16String& identifier)
{
    return FindRow(own, [&identifier](const RequestRow& row) {
               return *row.identifier == identifier || (row.reply != nullptr && *row.reply == identifier);
           }) != nullptr;
}

}  // namespace AC
