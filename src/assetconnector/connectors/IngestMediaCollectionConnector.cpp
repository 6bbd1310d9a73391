#include "assetconnector/connectors/IngestMediaCollectionConnector.h"

#include "assetconnector/connectors/CallbackReports.h"
#include "assetconnector/connectors/ConnectorFactory.h"
#include "assetconnector/connectors/ConnectorTables.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/MediaCollectionRequests.h"
#include "assetconnector/connectors/SendRoad.h"
#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/ferrite/ZString.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/Utilities.h"

#include <boost/make_shared.hpp>

namespace AC {
namespace {

const ferrite::utility::ImmutableString kMCAssetConnectorStation =
    ferrite::utility::ImmutableString::CreateStatic("AC.Station.MCAssetConnector");

/// Posts a copy of the record, as a station message of that class, to the media collection's listeners.
template <class Message>
void Post(const ACMessage& message)
{
    Kiln::StationUtils::PostMessageToUIThread(kMCAssetConnectorStation, Message(message), true);
}

using C = Callback;
using H = HeaderRule;
using E = Encoding;

constexpr BrowserRule kPanel = BrowserRule::kMediaCollection;
constexpr const UTF16String* kNoNotification = nullptr;

constexpr CallbackTable kCallbacks{{
    {C::OnIngestStarted, H::kTaskTwice, kPanel, kNoNotification, E::kPlain, Post<IngestStartedMessage>},
    {C::OnIngestFinished, H::kTaskTwice, kPanel, kNoNotification, E::kPlain, Post<IngestFinishedMessage>},
    {C::OnIngestCancelled, H::kTaskTwice, kPanel, kNoNotification, E::kPlain, Post<IngestCancelledMessage>},
    {C::OnIngestPaused, H::kUniqueTwice, kPanel},
    {C::OnIngestResumed, H::kUniqueTwice, kPanel},
    {C::OnIngestItemsReady, H::kTaskAndUnique, kPanel, &kPlexaEventType_NotificationIngestItemsReady,
     E::kPlain, Post<ImportItemsReadyMessage>},
    {C::OnBackupItemsReady, H::kTaskAndUnique, kPanel, &kPlexaEventType_NotificationBackupItemsReady,
     E::kPlain, Post<BackupItemsReadyMessage>},
    {C::OnIngestBatchStarted, H::kTaskAndUnique, kPanel, kNoNotification, E::kPlain,
     Post<IngestBatchStartedMessage>},
    {C::OnIngestBatchFinished, H::kTaskAndUnique, kPanel, kNoNotification, E::kPlain,
     Post<IngestBatchFinishedMessage>},
    {C::OnInitMiniMetadata, H::kFromCall, kPanel, &kPlexaEventType_NotificationInitMiniMetadata},
    {C::OnTranscodeStatus, H::kFromCall, kPanel, &kPlexaEventType_NotificationTranscodeStatus},
    {C::OnConcatenationStatus, H::kFromCall, kPanel, &kPlexaEventType_NotificationConcatenationStatus},
    {C::OnTranscodeProgress, H::kFromCall, kPanel, &kPlexaEventType_NotificationTranscodeProgress},
    {C::OnConcatenationProgress, H::kFromCall, kPanel, &kPlexaEventType_NotificationConcatenationProgress},
    {C::OnSaveAsset, H::kFromCall, kPanel, &kPlexaEventType_NotificationSaveAsset, E::kDecoded,
     Post<SaveAssetMessage>},
    {C::OnTriggerSaveAssetStatus, H::kFromCall, kPanel, &kPlexaEventType_NotificationTriggerSaveAssetStatus,
     E::kDecoded, Post<TriggerSaveAssetsFinishedMessage>},
    {C::OnFileChanged, H::kFromCall, kPanel, kNoNotification, E::kPlain, Post<AssetMediaInfoStateMessage>},
    {C::OnFileOffLine, H::kFromCall, kPanel, kNoNotification, E::kPlain,
     Post<FileOffLineNotificationMessage>},
    {C::OnXMPChanged, H::kFromCall, kPanel, kNoNotification, E::kPlain, Post<XMPChangedNotification>},
    {C::OnMediaInfoChanged, H::kFromCall, kPanel, kNoNotification, E::kPlain,
     Post<MediaInfoChangedNotification>},
    {C::OnImportXMPFinished, H::kFromCall, kPanel, kNoNotification, E::kPlain,
     Post<ImportXMPFinishedMessage>},
    {C::OnReadXMPFinished, H::kFromCall, kPanel, &kPlexaEventType_NotificationImportXMPStatus, E::kPlain,
     Post<ImportXMPFinishedMessage>},
    {C::OnRequestThumbnailStatus, H::kFromCall, kPanel, &kPlexaEventType_NotificationRequestThumbnailStatus,
     E::kPlain, Post<RequestThumbnaiFinishedMessage>},
    {C::OnTransferProgress, H::kFromCall, kPanel, &kPlexaEventType_NotificationTransferProgress},
    {C::OnTransferStatus, H::kFromCall, kPanel, &kPlexaEventType_NotificationTransferStatus},
    {C::OnRenameStatus, H::kFromCall, kPanel, &kPlexaEventType_NotificationRenameStatus},
    {C::OnGetMediaPropertyInfoStatus, H::kFromCall, kPanel,
     &kPlexaEventType_NotificationGetMediaPropertyInfoStatus},
    {C::OnGetTargetBinPath, H::kFromCall, kPanel, kNoNotification, E::kPlain, Post<GetTargetBinPathMessage>},
    {C::OnXMPFileTimeChanged, H::kFromCall, kPanel, kNoNotification, E::kPlain,
     Post<XMPFileTimeChangedMessage>},
}};
static_assert(RowsAreInOrder(kCallbacks), "a row for each callback, in their order");

constexpr StationName kStations[] = {GetMCAssetConnectorStation, Ridge::GetPlexaStationID};

constexpr ConnectorTables kTables{kCallbacks, kMediaCollectionRequests, Table<StationName>(kStations)};

constexpr char16_t kUnknownImportError[] =
    u"$$$/Brisel/Libraries/MediaCollection/ImportXMPResultErrorMessage=An unknown error occurred during "
    u"import.";

boost::shared_ptr<Ridge::ActionResult> FailedImport(const ReadXMPReport& report)
{
    auto result = boost::make_shared<Ridge::ActionResult>();
    result->assetID = ferrite::utility::Guid::CreateUnique();
    result->filePath = report.mediaPath;
    result->result = Ridge::kFailure;
    result->errorMessage = report.errors.empty()
                               ? ferrite::config::Localizer::Get().Lookup(kUnknownImportError)
                               : report.errors.front().message;
    return result;
}

}  // namespace

Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> CreateIngestMediaCollectionConnector(
    ALD::IAssetLibraryDispatcher* dispatcher)
{
    return ConnectorFactory::Create<IngestMediaCollectionConnector>(dispatcher);
}

ferrite::utility::ImmutableString GetMCAssetConnectorStation()
{
    return kMCAssetConnectorStation;
}

IngestMediaCollectionConnector::IngestMediaCollectionConnector() : ConnectorFrame(kTables)
{
    Subscribe();
}

IngestMediaCollectionConnector::~IngestMediaCollectionConnector()
{
    EndSubscriptions();
}

bool IngestMediaCollectionConnector::Handles(const UTF16String& identifier)
{
    return HandlesEvent(kTables, identifier);
}

void IngestMediaCollectionConnector::Report(const ImportXMPReport& report)
{
    AC::Report(RowOf(kTables, Callback::OnImportXMPFinished), report.task, report.message,
               [&report](ACMessage& record) {
                   record.taskItemID = report.taskItem;
                   record.batchID = report.batch;
                   if (report.code != 0) {
                       record.result = kACMessage_ResultFailure;
                       return;
                   }
                   record.result = kACMessage_ResultOK;
                   record.assetMediaInfoList = report.infos;
                   record.assetItemList = report.items;
               });
}

void IngestMediaCollectionConnector::Report(const ReadXMPReport& report)
{
    AC::Report(RowOf(kTables, Callback::OnReadXMPFinished), report.task, report.message,
               [&report](ACMessage& record) {
                   record.taskItemID = report.taskItem;
                   record.batchID = report.batch;
                   record.requestContext = report.requestContext;
                   if (report.code < 0) {
                       record.actionResultList.push_back(FailedImport(report));
                       record.result = kACMessage_ResultFailure;
                       return;
                   }
                   const UTF16String customMetadata =
                       Ridge::Utilities::CreateCustomMetadataStr(report.metadata);
                   record.result = kACMessage_ResultOK;
                   AppendMasterClip(report, customMetadata, record);
               });
}

}  // namespace AC
