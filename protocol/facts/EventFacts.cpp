#include "protocol/facts/EventFacts.h"

#include <string_view>

namespace Protocol {
namespace {

using Facts = std::array<EventFact, AC::kRequestCount + AC::kNotificationCount>;

constexpr const char* kIngest = "ingest";
constexpr const char* kXMP = "XMP";
constexpr const char* kTransfer = "transfer";
constexpr const char* kConversion = "conversion";
constexpr const char* kAssets = "assets";
constexpr const char* kColumns = "columns";
constexpr const char* kApplication = "application";
constexpr const char* kFirst = "0.1.0";

// clang-format off
constexpr Facts kRows{{
    {"kPlexaEventType_RequestInitInfo", kApplication, kFirst,
     "Ask for what a panel starts with.", "RequestInitInfoStatus"},
    {"kPlexaEventType_RegisterBrowser", kApplication, kFirst,
     "Make the panel known to the host.", "RegisterBrowerStatus"},
    {"kPlexaEventType_OpenIngestDlg", kIngest, kFirst,
     "Open the ingest dialog for a bin. The answer says `OK` whether or not the dialog opened.",
     "OpenIngestDlgStatus"},
    {"kPlexaEventType_IngestMedia", kIngest, kFirst,
     "Ingest files of one folder, on request with copies. The answer has a result for each path that was looked at, and "
     "is `ERROR` when one of them cannot be used, when there is none, or when `Copy` comes without a folder. The ingest "
     "begins all the same unless the first source cannot be used, behind which nothing is looked at; a folder for copies "
     "that cannot be used is left out.",
     "IngestMediaStatus",
     "StartIngest IngestStartBatch IngestItemsReady BackupItemsReady IngestFinishBatch FinishIngest CancelIngest "
     "PauseIngest ResumeIngest", "", "FinishIngest CancelIngest"},
    {"kPlexaEventType_ImportXMP", kXMP, kFirst,
     "Read the XMP of the first file of the list, as that of a new asset.",
     "ImportXMPStatus ReadXMPFromDiskStatus", "", "", "", "OnReadXMPFinished"},
    {"kPlexaEventType_UpdateXMPWithCustomData", kXMP, kFirst,
     "Put custom data into the XMP of assets.", "UpdateXMPWithCustomDataStatus"},
    {"kPlexaEventType_FinishImportFile", kIngest, kFirst,
     "Complete the import of a file: the first result of the list counts."},
    {"kPlexaEventType_RequestThumbnail", kAssets, kFirst,
     "Make a thumbnail of a clip.", "RequestThumbnailStatus"},
    {"kPlexaEventType_ExportAsset", kAssets, kFirst,
     "Export assets. They and the media information that comes with them are registered with the project first.",
     "ExportAssetStatus"},
    {"kPlexaEventType_SendToMontane", kAssets, kFirst,
     "Send assets to Montane.", "SendToMontaneStatus"},
    {"kPlexaEventType_OpenAsset", kAssets, kFirst, "Open an asset.", "OpenAssetStatus"},
    {"kPlexaEventType_CreateRoughCut", kAssets, kFirst, "Make a rough cut.", "CreateRoughCutStatus"},
    {"kPlexaEventType_AppendClips", kAssets, kFirst, "Append clips.", "AppendClipsStatus"},
    {"kPlexaEventType_InsertClips", kAssets, kFirst, "Insert clips.", "InsertClipsStatus"},
    {"kPlexaEventType_WriteXMPToDisk", kXMP, kFirst,
     "Write the XMP of the first asset of the list to its file.", "WriteXMPToDiskStatus"},
    {"kPlexaEventType_ReadXMPFromDisk", kXMP, kFirst,
     "Read the XMP of files again. The library connector has the host read that of the first asset. The media collection connector answers at once, with all of them; one that is no master clip or sub-clip, or cannot be read, makes the result `ERROR`.",
     "ReadXMPFromDiskStatus ImportXMPStatus", "", "", "", "OnReadXMPFinished"},
    {"kPlexaEventType_WriteRoughCutToDisk", kAssets, kFirst, "Write a rough cut to its file.",
     "WriteRoughCutToDiskStatus"},
    {"kPlexaEventType_ReadRoughCutFromDisk", kAssets, kFirst, "Read a rough cut from its file.",
     "ReadRoughCutFromDiskStatus"},
    {"kPlexaEventType_DeleteAsset", kAssets, kFirst, "Delete assets.",
     "DeleteAssetStatus"},
    {"kPlexaEventType_ExitApp", kApplication, kFirst,
     "Say whether the application may exit. Without `allowExit`, or with anything but `true`, the exit is refused; with `true` nothing happens."},
    {"kPlexaEventType_SelectAssets", kAssets, kFirst, "Select assets.", "SelectAssetsStatus"},
    {"kPlexaEventType_ReSyncAsset", kAssets, kFirst, "Bring assets up to date with their files.",
     "ReSyncAssetStatus"},
    {"kPlexaEventType_RegisterMonitorXMP", kXMP, kFirst, "Register the monitoring of XMP.", "RegisterMonitorXMPStatus"},
    {"kPlexaEventType_UnregisterMonitorXMP", kXMP, kFirst, "End the monitoring of XMP.",
     "UnregisterMonitorXMPStatus"},
    {"kPlexaEventType_RefreshXMP", kXMP, kFirst, "Read changed XMP again.", "RefreshXMPStatus"},
    {"kPlexaEventType_SaveAssetStatus", kAssets, kFirst, "Say how the saving of an asset went."},
    {"kPlexaEventType_ReportEvent", kApplication, kFirst, "Report an event to the host: an information, a warning or an error."},
    {"kPlexaEventType_TransferRequest", kTransfer, kFirst,
     "Transfer files, locally or by FTP.", "TransferStatus", "TransferProgress", "TransferCancel"},
    {"kPlexaEventType_TransferCancel", kTransfer, kFirst,
     "End a transfer: say the `taskID` and `msgID` of its request."},
    {"kPlexaEventType_RenameRequest", kTransfer, kFirst, "Rename files.", "RenameStatus"},
    {"kPlexaEventType_GetMediaPropertyInfo", kAssets, kFirst, "Ask for frame rate, start and duration of a file.",
     "GetMediaPropertyInfoStatus"},
    {"kPlexaEventType_ReadXMPFromCache", kXMP, kFirst,
     "Ask for the XMP that the project knows of the first asset of the list. Without it (no asset, one that is no master clip or sub-clip, a path without XMP, one that the project does not know) the result is `ERROR`.", "ReadXMPFromCacheStatus"},
    {"kPlexaEventType_TranscodeRequest", kConversion, kFirst, "Convert files with a preset.", "TranscodeStatus",
     "TranscodeProgress", "TranscodeCancel"},
    {"kPlexaEventType_TranscodeCancel", kConversion, kFirst,
     "End a conversion: say the `taskID` and `msgID` of its request."},
    {"kPlexaEventType_ConcatenationRequest", kConversion, kFirst, "Join files to one with a preset.",
     "ConcatenationStatus", "ConcatenationProgress", "ConcatenationCancel"},
    {"kPlexaEventType_ConcatenationCancel", kConversion, kFirst,
     "End a concatenation: say the `taskID` and `msgID` of its request."},
    {"kPlexaEventType_TriggerSaveAsset", kAssets, kFirst, "Have the host save assets.", "TriggerSaveAssetStatus"},
    {"kPlexaEventType_GetAssociatedFiles", kAssets, kFirst, "Ask which files belong to a file.",
     "GetAssociatedFilesStatus"},
    {"kPlexaEventType_GetCurrentWorkMode", kApplication, kFirst, "Ask for the host's mode of work.",
     "GetCurrentWorkModeStatus"},
    {"kPlexaEventType_IsMontaneInstalled", kApplication, kFirst,
     "Ask whether Montane is installed.", "IsMontaneInstalledStatus"},
    {"kPlexaEventType_InsertDynamicColumns", kColumns, kFirst,
     "Insert columns; a column may say the name that it had before. The identifiers of the message are not passed on.", "InsertDynamicColumnsStatus"},
    {"kPlexaEventType_DeleteDynamicColumns", kColumns, kFirst, "Delete columns. The identifiers of the message are not passed on.", "DeleteDynamicColumnsStatus"},
    {"kPlexaEventType_UpdateDynamicColumnFields", kColumns, kFirst, "Set the values of assets in columns. The identifiers of the message are not passed on.",
     "UpdateDynamicColumnFieldsStatus"},
    {"kPlexaEventType_SendTagTemplate", kAssets, kFirst, "Hand tag templates to the host.", "SendTagTemplateStatus"},

    {"kPlexaEventType_NotificationRequestInitInfoStatus", kApplication, kFirst, "What a panel starts with."},
    {"kPlexaEventType_NotificationRegisterBrowerStatus", kApplication, kFirst, "The panel is known."},
    {"kPlexaEventType_NotificationForceLoadBrower", kApplication, kFirst, "A panel is to be loaded."},
    {"kPlexaEventType_NotificationOpenIngestDlgStatus", kIngest, kFirst, "The ingest dialog was asked for."},
    {"kPlexaEventType_NotificationIngestMediaStatus", kIngest, kFirst,
     "What the check of the paths of an ingest found: a result for each path that was looked at."},
    {"kPlexaEventType_NotificationStartIngest", kIngest, kFirst, "A task of ingest has begun."},
    {"kPlexaEventType_NotificationIngestItemsReady", kIngest, kFirst, "Files of a task are ready."},
    {"kPlexaEventType_NotificationBackupItemsReady", kIngest, kFirst, "Copies of files of a task are ready."},
    {"kPlexaEventType_NotificationImportXMPStatus", kXMP, kFirst, "The XMP of a file was read, or could not be."},
    {"kPlexaEventType_NotificationUpdateXMPWithCustomDataStatus", kXMP, kFirst, "Custom data was put into XMP."},
    {"kPlexaEventType_NotificationIngestStartBatch", kIngest, kFirst, "A batch of a task has begun."},
    {"kPlexaEventType_NotificationIngestFinishBatch", kIngest, kFirst, "A batch of a task is done."},
    {"kPlexaEventType_NotificationFinishIngest", kIngest, kFirst, "A task of ingest is done."},
    {"kPlexaEventType_NotificationRequestThumbnailStatus", kAssets, kFirst, "A thumbnail was made, or could not be."},
    {"kPlexaEventType_NotificationCancelIngest", kIngest, kFirst, "A task of ingest was cancelled."},
    {"kPlexaEventType_NotificationPauseIngest", kIngest, kFirst, "Tasks of ingest pause."},
    {"kPlexaEventType_NotificationResumeIngest", kIngest, kFirst, "Tasks of ingest go on."},
    {"kPlexaEventType_NotificationExportAssetStatus", kAssets, kFirst, "Assets were exported."},
    {"kPlexaEventType_NotificationSendToMontaneStatus", kAssets, kFirst,
     "Assets were sent to Montane."},
    {"kPlexaEventType_NotificationOpenAssetStatus", kAssets, kFirst, "An asset was opened."},
    {"kPlexaEventType_NotificationCreateRoughCut", kAssets, kFirst, "A rough cut is to be made."},
    {"kPlexaEventType_NotificationCreateRoughCutStatus", kAssets, kFirst, "A rough cut was made."},
    {"kPlexaEventType_NotificationAppendClips", kAssets, kFirst, "Clips are to be appended."},
    {"kPlexaEventType_NotificationAppendClipsStatus", kAssets, kFirst, "Clips were appended."},
    {"kPlexaEventType_NotificationInsertClips", kAssets, kFirst, "Clips are to be inserted."},
    {"kPlexaEventType_NotificationInsertClipsStatus", kAssets, kFirst, "Clips were inserted."},
    {"kPlexaEventType_NotificationSaveAsset", kAssets, kFirst, "The host saves an asset."},
    {"kPlexaEventType_NotificationWriteXMPToDiskStatus", kXMP, kFirst, "XMP was written to a file."},
    {"kPlexaEventType_NotificationXMPFileTimeChanged", kXMP, kFirst, "Files with XMP have other times."},
    {"kPlexaEventType_NotificationReadXMPFromDiskStatus", kXMP, kFirst, "XMP was read again, or could not be."},
    {"kPlexaEventType_NotificationWriteRoughCutToDiskStatus", kAssets, kFirst, "A rough cut was written to its file."},
    {"kPlexaEventType_NotificationReadRoughCutFromDiskStatus", kAssets, kFirst, "What was imported, where this connector last carried out `ReadXMPFromDisk`; else it is `ImportXMPStatus`."},
    {"kPlexaEventType_NotificationCloseAsset", kAssets, kFirst, "An asset was closed."},
    {"kPlexaEventType_NotificationDeleteAssetStatus", kAssets, kFirst, "Assets were deleted."},
    {"kPlexaEventType_NotificationFileChanged", kAssets, kFirst, "A file has changed."},
    {"kPlexaEventType_NotificationAppExit", kApplication, kFirst,
     "The application is about to exit."},
    {"kPlexaEventType_NotificationSelectAssetsStatus", kAssets, kFirst, "Assets were selected."},
    {"kPlexaEventType_NotificationAssetDirty", kAssets, kFirst, "An asset has changes that are not saved."},
    {"kPlexaEventType_NotificationReSyncAssetStatus", kAssets, kFirst, "Assets were brought up to date."},
    {"kPlexaEventType_NotificationRegisterMonitorXMPStatus", kXMP, kFirst, "The monitoring of XMP is registered."},
    {"kPlexaEventType_NotificationUnregisterMonitorXMPStatus", kXMP, kFirst, "The monitoring of XMP has ended."},
    {"kPlexaEventType_NotificationRefreshXMPStatus", kXMP, kFirst, "Changed XMP was read again."},
    {"kPlexaEventType_NotificationXMPChanged", kXMP, kFirst, "The XMP of files has changed."},
    {"kPlexaEventType_NotificationTransferProgress", kTransfer, kFirst, "How far a transfer is."},
    {"kPlexaEventType_NotificationTransferStatus", kTransfer, kFirst, "A transfer is done, or ended."},
    {"kPlexaEventType_NotificationRenameStatus", kTransfer, kFirst, "Files were renamed, or could not be."},
    {"kPlexaEventType_NotificationSelectedAssetInfo", kAssets, kFirst, "Which assets are selected in the host."},
    {"kPlexaEventType_NotificationGetMediaPropertyInfoStatus", kAssets, kFirst,
     "Frame rate, start and duration of a file."},
    {"kPlexaEventType_NotificationReadXMPFromCacheStatus", kXMP, kFirst, "The XMP that the project knows."},
    {"kPlexaEventType_NotificationInitMiniMetadata", kIngest, kFirst,
     "Files whose minimum metadata begins."},
    {"kPlexaEventType_NotificationTranscodeStatus", kConversion, kFirst, "A conversion is done, or ended."},
    {"kPlexaEventType_NotificationTranscodeProgress", kConversion, kFirst, "How far a conversion is."},
    {"kPlexaEventType_NotificationConcatenationStatus", kConversion, kFirst, "A concatenation is done, or ended."},
    {"kPlexaEventType_NotificationConcatenationProgress", kConversion, kFirst, "How far a concatenation is."},
    {"kPlexaEventType_NotificationTriggerSaveAssetStatus", kAssets, kFirst, "Assets were saved, or could not be."},
    {"kPlexaEventType_NotificationExportResultInfo", kAssets, kFirst, "Where an export went."},
    {"kPlexaEventType_NotificationGetAssociatedFilesStatus", kAssets, kFirst, "The files that belong to a file."},
    {"kPlexaEventType_NotificationGetCurrentWorkModeStatus", kApplication, kFirst, "The host's mode of work."},
    {"kPlexaEventType_NotificationIsMontaneInstalledStatus", kApplication, kFirst,
     "Whether Montane is installed."},
    {"kPlexaEventType_NotificationInsertDynamicColumnsStatus", kColumns, kFirst, "Columns were added or renamed."},
    {"kPlexaEventType_NotificationDeleteDynamicColumnsStatus", kColumns, kFirst, "Columns were removed."},
    {"kPlexaEventType_NotificationUpdateDynamicColumnFieldsStatus", kColumns, kFirst, "Values in columns were set."},
    {"kPlexaEventType_NotificationSendTagTemplateStatus", kAssets, kFirst, "What became of each tag template."},
    {"kPlexaEventType_NotificationMarkerSelectionChanged", kAssets, kFirst, "Other markers are selected."},
    {"kPlexaEventType_NotificationMarkerChanged", kAssets, kFirst, "Markers have changed."},
    {"kPlexaEventType_NotificationMarkerAdded", kAssets, kFirst, "Markers were added."},
    {"kPlexaEventType_NotificationMarkerDeleted", kAssets, kFirst, "Markers were deleted."},
}};
// clang-format on

constexpr bool HasRow(std::string_view constant)
{
    for (const EventFact& row : kRows)
        if (row.constant == constant)
            return true;
    return false;
}

#define AC_EVENT(CONSTANT, IDENTIFIER, KIND) \
    static_assert(HasRow(#CONSTANT), "protocol/facts/EventFacts.cpp has no row for " #CONSTANT);
#include "assetconnector/connectors/EventCatalogue.def"
#undef AC_EVENT

constexpr bool RowsAreInOrder()
{
    constexpr std::string_view kConstants[] = {
#define AC_EVENT(CONSTANT, IDENTIFIER, KIND) #CONSTANT,
#include "assetconnector/connectors/EventCatalogue.def"
#undef AC_EVENT
    };
    for (std::size_t i = 0; i < kRows.size(); ++i)
        if (kRows[i].constant != kConstants[i])
            return false;
    return true;
}
static_assert(RowsAreInOrder(), "the rows follow EventCatalogue.def");

}  // namespace

const Facts kEventFacts = kRows;

}  // namespace Protocol
