#include "assetconnector/connectors/IngestGlintLibraryConnector.h"

#include "assetconnector/connectors/CallbackReports.h"
#include "assetconnector/connectors/ConnectorFactory.h"
#include "assetconnector/connectors/ConnectorTables.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/LibraryRequests.h"
#include "assetconnector/connectors/SendRoad.h"
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
static_assert(RowsAreInOrder(kCallbacks), "a row for each callback, in their order");

constexpr StationName kStations[] = {Ridge::GetPlexaStationID};

constexpr ConnectorTables kTables{kCallbacks, kLibraryRequests, Table<StationName>(kStations)};

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
    return ConnectorFactory::Create<IngestGlintLibraryConnector>(dispatcher);
}

IngestGlintLibraryConnector::IngestGlintLibraryConnector()
    : ConnectorFrame(kTables), mReadFromDisk(boost::make_shared<std::atomic<bool>>(false))
{
    Subscribe();
}

IngestGlintLibraryConnector::~IngestGlintLibraryConnector()
{
    EndSubscriptions();
}

bool IngestGlintLibraryConnector::Handles(const UTF16String& identifier)
{
    return HandlesEvent(kTables, identifier);
}

void IngestGlintLibraryConnector::OnPanelRequest(const UTF16String& type, const UTF16String& data)
{
    HandleRequest(
        kTables.requests, type, data,
        [dispatcher = Dispatcher(), readFromDisk = mReadFromDisk](const RequestRow& row, ACMessage& request) {
            row.handle(LibraryRequestCall{{row, request, dispatcher}, *readFromDisk});
        });
}

void IngestGlintLibraryConnector::Report(const ImportXMPReport& report)
{
    AC::Report(
        RowOf(kTables, Callback::OnImportXMPFinished), report.task, report.message,
        [&report](ACMessage& record) {
            record.batchID = report.batch;
            record.taskItemID = report.taskItem;
            record.assetMediaInfoList = report.infos;
            record.assetItemList = report.items;
            record.result = report.code == 0 ? kACMessage_ResultOK : kACMessage_ResultFailure;
        },
        [readFromDisk = mReadFromDisk](const CallbackRow& row) {
            return NotificationOf(row, *readFromDisk);
        });
}

void IngestGlintLibraryConnector::Report(const ReadXMPReport& report)
{
    AC::Report(
        RowOf(kTables, Callback::OnReadXMPFinished), report.task, report.message,
        [&report](ACMessage& record) {
            record.batchID = report.batch;
            record.taskItemID = report.taskItem;
            AppendMasterClip(report, UTF16String(), record);
            record.result = report.code < 0 ? kACMessage_ResultFailure : kACMessage_ResultOK;
        },
        [readFromDisk = mReadFromDisk, &report](const CallbackRow& row) {
            const bool isFromDisk = *readFromDisk;
            if (isFromDisk && report.code >= 0)
                RefreshProject(report.mediaPath, report.xmp);
            return NotificationOf(row, isFromDisk);
        });
}

}  // namespace AC
