#pragma once

#include "host/ferrite/Guid.h"
#include "host/ridge/RecordLists.h"
#include "host/tempora/Time.h"

namespace ALD {

/// Carries out what panels ask for. Implemented by the host, which owns it and keeps it alive as long as a
/// connector may call it; called on the thread that delivers the panel event, several at once. References
/// are valid during the call only. The host answers later, through the callbacks of
/// Ridge::IIngestLibraryNotifier, with the same task and message. What an operation throws travels to the
/// host's messaging. The order of the operations crosses the binary boundary and must not change.
class IAssetLibraryDispatcher
{
public:
    using Guid = ferrite::utility::Guid;

    virtual ~IAssetLibraryDispatcher() = default;

    /// \param asset The media info of the file, or a fresh GUID for a file that is not known yet.
    virtual void ReadXMPFile(const Guid& task, const Guid& message, const UTF16String& path,
                             const Guid& asset, const Guid& batch, const Guid& taskItem) = 0;
    virtual void SaveAssetItems(const Guid& task, const Guid& message, const Ridge::AssetItemList& items) = 0;
    /// \param startTime kTime_Invalid when the panel named none.
    virtual void CreateThumbnail(const Guid& task, const Guid& message, const UTF16String& clipPath,
                                 const tempora::TickTime& startTime, const Guid& asset, const Guid& batch,
                                 const Guid& taskItem) = 0;
    virtual void CompleteImportFile(const Guid& task, const Guid& message, const UTF16String& path,
                                    const Guid& batch, const Guid& taskItem, Ridge::ResultCode result,
                                    const UTF16String& error) = 0;
    virtual void ShowIngestDialog(const Guid& task, const Guid& message, const UTF16String& targetBin) = 0;
    virtual void StartMediaIngest(const Guid& task, const Guid& message,
                                  const AC::IngestMediaSettings& settings) = 0;
    /// \param info Not null.
    virtual void WriteXMPFile(const Guid& task, const Guid& message,
                              const boost::shared_ptr<Ridge::AssetMediaInfo>& info) = 0;
    /// \param code 0x80000000.
    virtual void RefuseExit(Ridge::ResultCode code) = 0;
    virtual void ExportAssets(const Guid& task, const Guid& message, const Ridge::AssetItemList& items,
                              const Ridge::AssetMediaInfoList& infos) = 0;
    /// \param level 0 information, 1 warning, 2 error.
    virtual void ReportPanelEvent(const Guid& task, const Guid& message, std::int32_t level,
                                  const UTF16String& text, bool showMessage) = 0;
    /// \param option 1 overwrite, else 0. \param type 1 FTP, 0 local.
    virtual void StartTransfer(const Guid& task, const Guid& message, const Ridge::TransferItemList& items,
                               std::int32_t option, const AC::FtpSetting& ftp, std::int32_t type) = 0;
    virtual void CancelTransfer(const Guid& task, const Guid& message) = 0;
    virtual void RenameItems(const Guid& task, const Guid& message, const AC::RenameItemList& items) = 0;
    virtual void QueryMediaPropertyInfo(const Guid& task, const Guid& message, const UTF16String& path,
                                        const Guid& asset) = 0;
    virtual void QueryAssociatedFiles(const Guid& task, const Guid& message, const UTF16String& path) = 0;
    virtual void StartTranscode(const Guid& task, const Guid& message, const UTF16String& presetPath,
                                const UTF16String& outputDirectory, bool outputXMP,
                                const Ridge::TranscodeItemList& items) = 0;
    virtual void StartConcatenation(const Guid& task, const Guid& message, const UTF16String& presetPath,
                                    const UTF16String& outputDirectory, const UTF16String& outputFileName,
                                    bool outputXMP, const Ridge::ConcatenationItemList& items) = 0;
    virtual void CancelTranscode(const Guid& task, const Guid& message) = 0;
    virtual void CancelConcatenation(const Guid& task, const Guid& message) = 0;
    virtual void QueryCurrentWorkMode(const Guid& task, const Guid& message) = 0;
    virtual void QueryMontaneInstalled(const Guid& task, const Guid& message) = 0;
    /// \param option 1 overwrite, else 0.
    virtual void ApplyTagTemplate(const Guid& task, const Guid& message,
                                  const Ridge::TagTemplateInfoList& infos, std::int32_t option) = 0;
};

}  // namespace ALD
