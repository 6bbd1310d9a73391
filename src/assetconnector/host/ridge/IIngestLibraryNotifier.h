#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/kiln/KilnUnknown.h"
#include "assetconnector/host/ridge/ErrorRecord.h"
#include "assetconnector/host/ridge/RecordLists.h"
#include "assetconnector/host/tempora/Time.h"

namespace Ridge {

/// What the ingest library reports. Implemented by the connectors, called by the host on any thread, several
/// at once. The order of the operations crosses the binary boundary and must not change.
///
/// Most operations begin with the task and the message they report on. Lists are passed on whole and in
/// order, null entries included; shared objects stay shared with the caller. Result codes are named as
/// ACUtils::GetResultString does, unless an operation says that only the sign counts: negative is "ERROR",
/// anything else "OK". Percentages go out as they are, but for -1, which says that there is none. Which
/// operation tells which panel or station is in each connector's table; several tell nobody. What an
/// operation of the host throws under way travels back to the caller; nothing is sent after it.
class IIngestLibraryNotifier : public KilnUnknown
{
public:
    using Guid = ferrite::utility::Guid;

    /// {C88718C1-F298-49F2-8B18-2AA34923B7BB}
    AC_CONSTANT static constexpr Guid kInterfaceID{0xC88718C1F29849F2, 0x8B182AA34923B7BB};

    virtual void OnIngestStarted(const Guid& task) = 0;
    virtual void OnIngestFinished(const Guid& task) = 0;
    virtual void OnIngestCancelled(const Guid& task) = 0;
    virtual void OnIngestPaused(const GuidList& tasks) = 0;
    virtual void OnIngestResumed(const GuidList& tasks) = 0;
    /// An empty item list is not reported; the same holds for OnBackupItemsReady.
    virtual void OnIngestItemsReady(const Guid& task, const Guid& batch, const Guid& taskItem,
                                    const IngestItemList& items, const CustomMetadata& metadata) = 0;
    virtual void OnBackupItemsReady(const Guid& task, const Guid& batch, const IngestItemList& items,
                                    const CustomMetadata& metadata) = 0;
    /// A zero batch is not reported; the same holds for OnIngestBatchFinished.
    virtual void OnIngestBatchStarted(const Guid& task, const Guid& batch, const UTF16String& targetBin) = 0;
    virtual void OnIngestBatchFinished(const Guid& task, const Guid& batch) = 0;
    virtual void OnInitMiniMetadata(const Guid& task, const Guid& message, const IngestItemList& items) = 0;
    virtual void OnTranscodeStatus(const Guid& task, const Guid& message, ResultCode code,
                                   const UTF16String& error, const UTF16String& outputPath) = 0;
    virtual void OnConcatenationStatus(const Guid& task, const Guid& message, ResultCode code,
                                       const UTF16String& error, const UTF16String& outputPath) = 0;
    virtual void OnTranscodeProgress(const Guid& task, const Guid& message, std::int32_t percentage) = 0;
    virtual void OnConcatenationProgress(const Guid& task, const Guid& message, std::int32_t percentage) = 0;
    /// \param item May be null: then there is none. \param saveFlag For listeners of the media collection's
    /// station; no panel sees it.
    virtual void OnSaveAsset(const Guid& task, const Guid& message, const AssetMediaInfoList& infos,
                             const boost::shared_ptr<AssetItem>& item, bool saveFlag) = 0;
    /// The sign of the code counts. \param error Told on failure. \param infos Told on success.
    virtual void OnTriggerSaveAssetStatus(const Guid& task, const Guid& message, ResultCode code,
                                          const UTF16String& error, const AssetMediaInfoList& infos) = 0;
    /// \param info May be null: then there is none.
    virtual void OnFileChanged(const Guid& task, const Guid& message,
                               const boost::shared_ptr<AssetMediaInfo>& info, ResultCode code) = 0;
    virtual void OnFileOffLine(const Guid& task, const Guid& message, const PathList& paths) = 0;
    virtual void OnXMPChanged(const Guid& task, const Guid& message, const AssetMediaInfoList& infos) = 0;
    virtual void OnMediaInfoChanged(const Guid& task, const Guid& message,
                                    const AssetMediaInfoList& infos) = 0;
    /// Only the code 0 is "OK".
    virtual void OnImportXMPFinished(const Guid& task, const Guid& message, ResultCode code,
                                     const Guid& batch, const Guid& taskItem, const AssetMediaInfoList& infos,
                                     const AssetItemList& items) = 0;
    /// The sign of the code counts. \param xmp May be null. \param createTime, lastModifyTime Of the file,
    /// passed on to AssetMediaInfo::CreateMasterClipMediaInfo. \param metadata, errors, requestContext For
    /// the media collection alone: what the user typed in; on failure, what went wrong; what is kept as long
    /// as a record or message of this report lives, and may be null.
    virtual void OnReadXMPFinished(const Guid& task, const Guid& message, ResultCode code,
                                   const UTF16String& mediaPath, const Guid& mediaInfo,
                                   const CustomMetadata& metadata, const XMPText& xmp,
                                   const UTF16String& createTime, const UTF16String& lastModifyTime,
                                   const Guid& batch, const Guid& taskItem, const ErrorRecordList& errors,
                                   const Kiln::InterfaceRef<KilnUnknown>& requestContext) = 0;
    /// The sign of the code counts. \param startTime kTime_Invalid for none. \param thumbPath Told on
    /// success.
    virtual void OnRequestThumbnailStatus(const Guid& task, const Guid& message, ResultCode code,
                                          const UTF16String& clipPath, const Guid& asset,
                                          tempora::TickTime startTime, const UTF16String& thumbPath,
                                          const Guid& batch, const Guid& taskItem) = 0;
    virtual void OnTransferProgress(const Guid& task, const Guid& message, std::int32_t percentage) = 0;
    virtual void OnTransferStatus(const Guid& task, const Guid& message, ResultCode code,
                                  const TransferResultList& results) = 0;
    virtual void OnRenameStatus(const Guid& task, const Guid& message, ResultCode code,
                                const TransferResultList& results) = 0;
    /// The sign of the code counts.
    virtual void OnGetMediaPropertyInfoStatus(const Guid& task, const Guid& message, ResultCode code,
                                              const AC::MediaPropertyInfo& info) = 0;
    virtual void OnGetTargetBinPath(const Guid& task, const Guid& message) = 0;
    virtual void OnXMPFileTimeChanged(const Guid& task, const Guid& message, ResultCode code,
                                      const ActionResultList& results) = 0;
};

/// How many callbacks the interface has. Each connector has a row for every one.
constexpr int kCallbackCount = 29;

}  // namespace Ridge
