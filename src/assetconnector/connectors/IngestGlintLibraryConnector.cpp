#include "assetconnector/connectors/IngestGlintLibraryConnector.h"

#include "assetconnector/connectors/CallbackTable.h"
#include "assetconnector/connectors/ConnectorFactory.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/HandledEvents.h"
#include "assetconnector/connectors/LibraryRequests.h"
#include "assetconnector/connectors/SendRoad.h"
#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/SRProject.h"
#include "assetconnector/host/ridge/Utilities.h"

#include <boost/make_shared.hpp>

namespace AC {
namespace {

using C = Callback;
using H = HeaderRule;
using B = BrowserRule;
using E = Encoding;

constexpr CallbackTable kCallbacks{{
    {C::OnIngestStarted, H::kTaskAndUnique, B::kCurrent, &kPlexaEventType_NotificationStartIngest},
    {C::OnIngestFinished, H::kTaskTwice, B::kCurrent, &kPlexaEventType_NotificationFinishIngest},
    {C::OnIngestCancelled, H::kTaskTwice, B::kCurrent, &kPlexaEventType_NotificationCancelIngest},
    {C::OnIngestPaused, H::kUniqueTwice, B::kCurrent, &kPlexaEventType_NotificationPauseIngest},
    {C::OnIngestResumed, H::kUniqueTwice, B::kCurrent, &kPlexaEventType_NotificationResumeIngest},
    {C::OnIngestItemsReady, H::kTaskAndUnique, B::kCurrent, &kPlexaEventType_NotificationIngestItemsReady},
    {C::OnBackupItemsReady, H::kTaskAndUnique, B::kCurrent, &kPlexaEventType_NotificationBackupItemsReady},
    {C::OnIngestBatchStarted, H::kTaskAndUnique, B::kCurrent, &kPlexaEventType_NotificationIngestStartBatch},
    {C::OnIngestBatchFinished, H::kTaskAndUnique, B::kCurrent,
     &kPlexaEventType_NotificationIngestFinishBatch},
    {C::OnInitMiniMetadata, H::kFromCall, B::kMediaCollection, &kPlexaEventType_NotificationInitMiniMetadata},
    {C::OnTranscodeStatus, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationTranscodeStatus},
    {C::OnConcatenationStatus, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationConcatenationStatus},
    {C::OnTranscodeProgress, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationTranscodeProgress},
    {C::OnConcatenationProgress, H::kFromCall, B::kCurrent,
     &kPlexaEventType_NotificationConcatenationProgress},
    {C::OnSaveAsset, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationSaveAsset, E::kDecoded},
    {C::OnTriggerSaveAssetStatus, H::kFromCall, B::kCurrent,
     &kPlexaEventType_NotificationTriggerSaveAssetStatus, E::kDecoded},
    {C::OnFileChanged, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationFileChanged},
    {C::OnFileOffLine, H::kFromCall, B::kCurrent},
    {C::OnXMPChanged, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationXMPChanged},
    {C::OnMediaInfoChanged, H::kFromCall, B::kCurrent},
    {C::OnImportXMPFinished, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationImportXMPStatus,
     E::kDecoded, nullptr, &kPlexaEventType_NotificationReadRoughCutFromDiskStatus},
    {C::OnReadXMPFinished, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationImportXMPStatus,
     E::kDecoded, nullptr, &kPlexaEventType_NotificationReadXMPFromDiskStatus},
    {C::OnRequestThumbnailStatus, H::kFromCall, B::kCurrent,
     &kPlexaEventType_NotificationRequestThumbnailStatus},
    {C::OnTransferProgress, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationTransferProgress},
    {C::OnTransferStatus, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationTransferStatus},
    {C::OnRenameStatus, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationRenameStatus},
    {C::OnGetMediaPropertyInfoStatus, H::kFromCall, B::kMediaCollection,
     &kPlexaEventType_NotificationGetMediaPropertyInfoStatus},
    {C::OnGetTargetBinPath, H::kFromCall, B::kCurrent},
    {C::OnXMPFileTimeChanged, H::kFromCall, B::kCurrent, &kPlexaEventType_NotificationXMPFileTimeChanged},
}};
static_assert(RowsAreInOrder(kCallbacks));

const UTF16String* NotificationOf(const CallbackRow& row, bool readFromDisk)
{
    return readFromDisk ? row.notificationFromDisk : row.notification;
}

void RefreshProject(const UTF16String& mediaPath, const Ridge::XMPText& xmp)
{
    if (const boost::shared_ptr<Ridge::SRProject> project = Ridge::SRProject::GetInstance())
        project->RefreshAssetMediaInfoByPath(mediaPath, xmp);
}

}  // namespace

Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> CreateIngestGlintLibraryConnector(
    ALD::IAssetLibraryDispatcher* dispatcher)
{
    return IngestGlintLibraryConnector::Create<IngestGlintLibraryConnector>(dispatcher);
}

IngestGlintLibraryConnector::IngestGlintLibraryConnector()
    : ConnectorFrame(kCallbacks), mReadFromDisk(boost::make_shared<std::atomic<bool>>(false))
{
    Subscribe({Ridge::GetPlexaStationID()});
}

IngestGlintLibraryConnector::~IngestGlintLibraryConnector()
{
    EndSubscriptions();
}

void IngestGlintLibraryConnector::OnPanelRequest(const UTF16String& type, const UTF16String& data)
{
    HandleRequest(kLibraryRequests, type, data, Dispatcher(), mReadFromDisk);
}

bool IngestGlintLibraryConnector::Handles(const UTF16String& identifier)
{
    return HandlesEvent(kCallbacks, kLibraryRequests, identifier);
}

void IngestGlintLibraryConnector::OnImportXMPFinished(const Guid& task, const Guid& message,
                                                      Ridge::ResultCode code, const Guid& batch,
                                                      const Guid& taskItem,
                                                      const Ridge::AssetMediaInfoList& infos,
                                                      const Ridge::AssetItemList& items)
{
    const auto readFromDisk = mReadFromDisk;  // a call of the host may drop this connector
    Report(
        RowOf(Callback::OnImportXMPFinished), task, message,
        [&](ACMessage& record) {
            record.batchID = batch;
            record.taskItemID = taskItem;
            record.assetMediaInfoList = infos;
            record.assetItemList = items;
            record.result = code == 0 ? kACMessage_ResultOK : kACMessage_ResultFailure;
        },
        [&readFromDisk](const CallbackRow& row) { return NotificationOf(row, *readFromDisk); });
}

void IngestGlintLibraryConnector::OnReadXMPFinished(
    const Guid& task, const Guid& message, Ridge::ResultCode code, const UTF16String& mediaPath,
    const Guid& mediaInfo, const Ridge::CustomMetadata& /*metadata*/, const Ridge::XMPText& xmp,
    const UTF16String& createTime, const UTF16String& lastModifyTime, const Guid& batch, const Guid& taskItem,
    const Ridge::ErrorRecordList& /*errors*/, const Kiln::InterfaceRef<KilnUnknown>& /*requestContext*/)
{
    const auto readFromDisk = mReadFromDisk;  // as above
    Report(
        RowOf(Callback::OnReadXMPFinished), task, message,
        [&](ACMessage& record) {
            record.batchID = batch;
            record.taskItemID = taskItem;
            if (auto info = Ridge::AssetMediaInfo::CreateMasterClipMediaInfo(
                    mediaInfo, mediaPath, Kiln::PathUtils::GetFilePart(mediaPath), xmp, UTF16String(),
                    createTime, lastModifyTime, UTF16String()))
                record.assetMediaInfoList.push_back(info);
            record.result = code < 0 ? kACMessage_ResultFailure : kACMessage_ResultOK;
        },
        [&](const CallbackRow& row) {
            const bool isFromDisk = *readFromDisk;
            if (isFromDisk && code >= 0)
                RefreshProject(mediaPath, xmp);
            return NotificationOf(row, isFromDisk);
        });
}

}  // namespace AC
