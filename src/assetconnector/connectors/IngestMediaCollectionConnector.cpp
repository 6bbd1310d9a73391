#include "assetconnector/connectors/IngestMediaCollectionConnector.h"

#include "assetconnector/connectors/CallbackTable.h"
#include "assetconnector/connectors/ConnectorFactory.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/HandledEvents.h"
#include "assetconnector/connectors/MediaCollectionRequests.h"
#include "assetconnector/connectors/SendRoad.h"
#include "assetconnector/connectors/StationPosts.h"
#include "assetconnector/host/ferrite/ZString.h"
#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/Utilities.h"

#include <boost/make_shared.hpp>

namespace AC {

const ferrite::utility::ImmutableString kMCAssetConnectorStation =
    ferrite::utility::ImmutableString::CreateStatic("AC.Station.MCAssetConnector");

namespace {

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
static_assert(RowsAreInOrder(kCallbacks));

constexpr char16_t kUnknownImportError[] =
    u"$$$/Brisel/Libraries/MediaCollection/ImportXMPResultErrorMessage=An unknown error occurred during "
    u"import.";

boost::shared_ptr<Ridge::ActionResult> FailedImport(const UTF16String& mediaPath,
                                                    const Ridge::ErrorRecordList& errors)
{
    auto result = boost::make_shared<Ridge::ActionResult>();
    result->assetID = ferrite::utility::Guid::CreateUnique();
    result->filePath = mediaPath;
    result->result = Ridge::kFailure;
    result->errorMessage = errors.empty() ? ferrite::config::Localizer::Get().Lookup(kUnknownImportError)
                                          : errors.front().message;
    return result;
}

}  // namespace

Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> CreateIngestMediaCollectionConnector(
    ALD::IAssetLibraryDispatcher* dispatcher)
{
    return IngestMediaCollectionConnector::Create<IngestMediaCollectionConnector>(dispatcher);
}

ferrite::utility::ImmutableString GetMCAssetConnectorStation()
{
    return kMCAssetConnectorStation;
}

IngestMediaCollectionConnector::IngestMediaCollectionConnector() : ConnectorFrame(kCallbacks)
{
    Subscribe({kMCAssetConnectorStation, Ridge::GetPlexaStationID()});
}

IngestMediaCollectionConnector::~IngestMediaCollectionConnector()
{
    EndSubscriptions();
}

void IngestMediaCollectionConnector::OnPanelRequest(const UTF16String& type, const UTF16String& data)
{
    HandleRequest(kMediaCollectionRequests, type, data, Dispatcher());
}

bool IngestMediaCollectionConnector::Handles(const UTF16String& identifier)
{
    return HandlesEvent(kCallbacks, kMediaCollectionRequests, identifier);
}

void IngestMediaCollectionConnector::OnImportXMPFinished(const Guid& task, const Guid& message,
                                                         Ridge::ResultCode code, const Guid& batch,
                                                         const Guid& taskItem,
                                                         const Ridge::AssetMediaInfoList& infos,
                                                         const Ridge::AssetItemList& items)
{
    Report(RowOf(Callback::OnImportXMPFinished), task, message, [&](ACMessage& record) {
        record.taskItemID = taskItem;
        record.batchID = batch;
        if (code != 0) {
            record.result = kACMessage_ResultFailure;
            return;
        }
        record.result = kACMessage_ResultOK;
        record.assetMediaInfoList = infos;
        record.assetItemList = items;
    });
}

void IngestMediaCollectionConnector::OnReadXMPFinished(
    const Guid& task, const Guid& message, Ridge::ResultCode code, const UTF16String& mediaPath,
    const Guid& mediaInfo, const Ridge::CustomMetadata& metadata, const Ridge::XMPText& xmp,
    const UTF16String& createTime, const UTF16String& lastModifyTime, const Guid& batch, const Guid& taskItem,
    const Ridge::ErrorRecordList& errors, const Kiln::InterfaceRef<KilnUnknown>& requestContext)
{
    Report(RowOf(Callback::OnReadXMPFinished), task, message, [&](ACMessage& record) {
        record.taskItemID = taskItem;
        record.batchID = batch;
        record.requestContext = requestContext;
        if (code < 0) {
            record.actionResultList.push_back(FailedImport(mediaPath, errors));
            record.result = kACMessage_ResultFailure;
            return;
        }
        const UTF16String customMetadata = Ridge::Utilities::CreateCustomMetadataStr(metadata);
        record.result = kACMessage_ResultOK;
        if (auto info = Ridge::AssetMediaInfo::CreateMasterClipMediaInfo(
                mediaInfo, mediaPath, Kiln::PathUtils::GetFilePart(mediaPath), xmp, customMetadata,
                createTime, lastModifyTime, UTF16String()))
            record.assetMediaInfoList.push_back(info);
    });
}

}  // namespace AC
