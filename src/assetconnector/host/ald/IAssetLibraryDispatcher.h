#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ridge/RecordLists.h"
#include "assetconnector/host/tempora/Time.h"

namespace ALD {

/// Carries out what panels ask for. Implemented by the host, which owns it and keeps it alive as long as a
/// connector has it and until every panel event that was raised before has been delivered, even if the
/// connector was dropped or got another dispatcher meanwhile: a request under way still calls it. Called on
/// the thread that delivers the panel event, several at once. References are valid during the call only. The
/// host answers later, through the callbacks of Ridge::IIngestLibraryNotifier, with the same task and
/// message. What an operation throws travels to the host's messaging. The order of the operations crosses the
/// binary boundary and must not change, nor does the interface grow within a version.
class IAssetLibraryDispatcher
{
public:
    using Guid = ferrite::utility::Guid;

    virtual ~IAssetLibraryDispatcher() = default;

    // Every operation but RefuseExit begins with the task and the message of the request.

    /// Reads a file's XMP; answered by OnReadXMPFinished.
    /// \param path Of the media file. \param asset Its media info, or a fresh GUID for a file that is not
    ///        known yet. \param batch, taskItem Zero when the panel named none.
    virtual void ReadXMPFile(const Guid& task, const Guid& message, const UTF16String& path,
                             const Guid& asset, const Guid& batch, const Guid& taskItem) = 0;

    /// Saves assets; answered by OnTriggerSaveAssetStatus. \param items May be empty.
    virtual void SaveAssetItems(const Guid& task, const Guid& message, const Ridge::AssetItemList& items) = 0;

    /// Makes a thumbnail; answered by OnRequestThumbnailStatus.
    /// \param startTime Where in the clip; kTime_Invalid when the panel named no time.
    virtual void CreateThumbnail(const Guid& task, const Guid& message, const UTF16String& clipPath,
                                 const tempora::TickTime& startTime, const Guid& asset, const Guid& batch,
                                 const Guid& taskItem) = 0;

    /// The panel is through with a file that it was told of. \param result 0 or 0x80000000.
    virtual void CompleteImportFile(const Guid& task, const Guid& message, const UTF16String& path,
                                    const Guid& batch, const Guid& taskItem, const Ridge::ResultCode& result,
                                    const UTF16String& error) = 0;

    /// Opens the ingest dialog. The connector itself answers the panel, after this call.
    /// \param targetBin Empty when the panel named none.
    virtual void ShowIngestDialog(const Guid& task, const Guid& message, const UTF16String& targetBin) = 0;

    /// Ingests media whose first source was found to be a file; the panel has been told of all of them.
    /// \param settings Items beyond the first may be unusable. Where copies are asked for, an unusable
    ///        folder to copy into is empty.
    virtual void StartMediaIngest(const Guid& task, const Guid& message,
                                  const AC::IngestMediaSettings& settings) = 0;

    /// Writes XMP to the media file. \param info Not null.
    virtual void WriteXMPFile(const Guid& task, const Guid& message,
                              const boost::shared_ptr<Ridge::AssetMediaInfo>& info) = 0;

    /// A panel does not allow the application to end. \param code 0x80000000.
    virtual void RefuseExit(Ridge::ResultCode code) = 0;

    /// Exports assets, which are registered with the project by now. \param items, infos May be empty.
    virtual void ExportAssets(const Guid& task, const Guid& message, const Ridge::AssetItemList& items,
                              const Ridge::AssetMediaInfoList& infos) = 0;

    /// Reports what happened in a panel. \param level 0 information, 1 warning, 2 error.
    /// \param showMessage Whether the user should see it.
    virtual void ReportPanelEvent(const Guid& task, const Guid& message, std::int32_t level,
                                  const UTF16String& text, bool showMessage) = 0;

    /// Copies files; answered by OnTransferProgress and OnTransferStatus. \param items May be empty.
    /// \param option 1 overwrites, else 0. \param ftp Where to, for type 1. \param type 1 FTP, 0 local.
    virtual void StartTransfer(const Guid& task, const Guid& message, const Ridge::TransferItemList& items,
                               std::int32_t option, const AC::FtpSetting& ftp, std::int32_t type) = 0;
    virtual void CancelTransfer(const Guid& task, const Guid& message) = 0;

    /// Renames files; answered by OnRenameStatus. \param items May be empty.
    virtual void RenameItems(const Guid& task, const Guid& message, const AC::RenameItemList& items) = 0;

    /// Answered by OnGetMediaPropertyInfoStatus. \param path, asset Either may be missing.
    virtual void QueryMediaPropertyInfo(const Guid& task, const Guid& message, const UTF16String& path,
                                        const Guid& asset) = 0;

    /// Asks which files belong to the one of the path.
    virtual void QueryAssociatedFiles(const Guid& task, const Guid& message, const UTF16String& path) = 0;

    /// Transcodes; answered by OnTranscodeProgress and OnTranscodeStatus. \param outputXMP Whether to write
    /// XMP beside the result. \param items Not empty; in order.
    virtual void StartTranscode(const Guid& task, const Guid& message, const UTF16String& presetPath,
                                const UTF16String& outputDirectory, bool outputXMP,
                                const Ridge::TranscodeItemList& items) = 0;

    /// Joins clips into one file; answered by OnConcatenationProgress and OnConcatenationStatus.
    /// \param items Not empty; in the order in which they are joined.
    virtual void StartConcatenation(const Guid& task, const Guid& message, const UTF16String& presetPath,
                                    const UTF16String& outputDirectory, const UTF16String& outputFileName,
                                    bool outputXMP, const Ridge::ConcatenationItemList& items) = 0;
    virtual void CancelTranscode(const Guid& task, const Guid& message) = 0;
    virtual void CancelConcatenation(const Guid& task, const Guid& message) = 0;

    /// Asks for the current work mode.
    virtual void QueryCurrentWorkMode(const Guid& task, const Guid& message) = 0;

    /// Asks whether the companion application is installed.
    virtual void QueryMontaneInstalled(const Guid& task, const Guid& message) = 0;

    /// Applies tag templates. \param infos May be empty. \param option 1 overwrites, else 0.
    virtual void ApplyTagTemplate(const Guid& task, const Guid& message,
                                  const Ridge::TagTemplateInfoList& infos, std::int32_t option) = 0;
};

/// How many operations the interface has.
constexpr int kOperationCount = 22;

}  // namespace ALD
