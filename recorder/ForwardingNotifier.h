#pragma once

#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"

namespace Recording {

/// Calls a hook for every callback, by its name, and lets it pass the call on.
template <class Hook>
class ForwardingNotifier : public Ridge::IIngestLibraryNotifier
{
    using Next = Ridge::IIngestLibraryNotifier;

public:
    /// \param next Not null.
    ForwardingNotifier(Kiln::InterfaceRef<Next> next, Hook hook)
        : mNext(std::move(next)), mHook(std::move(hook))
    {
    }

    void OnIngestStarted(const Guid& task) override { Pass("OnIngestStarted", &Next::OnIngestStarted, task); }
    void OnIngestFinished(const Guid& task) override
    {
        Pass("OnIngestFinished", &Next::OnIngestFinished, task);
    }
    void OnIngestCancelled(const Guid& task) override
    {
        Pass("OnIngestCancelled", &Next::OnIngestCancelled, task);
    }
    void OnIngestPaused(const Ridge::GuidList& tasks) override
    {
        Pass("OnIngestPaused", &Next::OnIngestPaused, tasks);
    }
    void OnIngestResumed(const Ridge::GuidList& tasks) override
    {
        Pass("OnIngestResumed", &Next::OnIngestResumed, tasks);
    }
    void OnIngestItemsReady(const Guid& task, const Guid& batch, const Guid& taskItem,
                            const Ridge::IngestItemList& items,
                            const Ridge::CustomMetadata& metadata) override
    {
        Pass("OnIngestItemsReady", &Next::OnIngestItemsReady, task, batch, taskItem, items, metadata);
    }
    void OnBackupItemsReady(const Guid& task, const Guid& batch, const Ridge::IngestItemList& items,
                            const Ridge::CustomMetadata& metadata) override
    {
        Pass("OnBackupItemsReady", &Next::OnBackupItemsReady, task, batch, items, metadata);
    }
    void OnIngestBatchStarted(const Guid& task, const Guid& batch, const UTF16String& targetBin) override
    {
        Pass("OnIngestBatchStarted", &Next::OnIngestBatchStarted, task, batch, targetBin);
    }
    void OnIngestBatchFinished(const Guid& task, const Guid& batch) override
    {
        Pass("OnIngestBatchFinished", &Next::OnIngestBatchFinished, task, batch);
    }
    void OnInitMiniMetadata(const Guid& task, const Guid& message,
                            const Ridge::IngestItemList& items) override
    {
        Pass("OnInitMiniMetadata", &Next::OnInitMiniMetadata, task, message, items);
    }
    void OnTranscodeStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                           const UTF16String& error, const UTF16String& outputPath) override
    {
        Pass("OnTranscodeStatus", &Next::OnTranscodeStatus, task, message, code, error, outputPath);
    }
    void OnConcatenationStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                               const UTF16String& error, const UTF16String& outputPath) override
    {
        Pass("OnConcatenationStatus", &Next::OnConcatenationStatus, task, message, code, error, outputPath);
    }
    void OnTranscodeProgress(const Guid& task, const Guid& message, std::int32_t percentage) override
    {
        Pass("OnTranscodeProgress", &Next::OnTranscodeProgress, task, message, percentage);
    }
    void OnConcatenationProgress(const Guid& task, const Guid& message, std::int32_t percentage) override
    {
        Pass("OnConcatenationProgress", &Next::OnConcatenationProgress, task, message, percentage);
    }
    void OnSaveAsset(const Guid& task, const Guid& message, const Ridge::AssetMediaInfoList& infos,
                     const boost::shared_ptr<Ridge::AssetItem>& item, bool saveFlag) override
    {
        Pass("OnSaveAsset", &Next::OnSaveAsset, task, message, infos, item, saveFlag);
    }
    void OnTriggerSaveAssetStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                  const UTF16String& error, const Ridge::AssetMediaInfoList& infos) override
    {
        Pass("OnTriggerSaveAssetStatus", &Next::OnTriggerSaveAssetStatus, task, message, code, error, infos);
    }
    void OnFileChanged(const Guid& task, const Guid& message,
                       const boost::shared_ptr<Ridge::AssetMediaInfo>& info, Ridge::ResultCode code) override
    {
        Pass("OnFileChanged", &Next::OnFileChanged, task, message, info, code);
    }
    void OnFileOffLine(const Guid& task, const Guid& message, const Ridge::PathList& paths) override
    {
        Pass("OnFileOffLine", &Next::OnFileOffLine, task, message, paths);
    }
    void OnXMPChanged(const Guid& task, const Guid& message, const Ridge::AssetMediaInfoList& infos) override
    {
        Pass("OnXMPChanged", &Next::OnXMPChanged, task, message, infos);
    }
    void OnMediaInfoChanged(const Guid& task, const Guid& message,
                            const Ridge::AssetMediaInfoList& infos) override
    {
        Pass("OnMediaInfoChanged", &Next::OnMediaInfoChanged, task, message, infos);
    }
    void OnImportXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code, const Guid& batch,
                             const Guid& taskItem, const Ridge::AssetMediaInfoList& infos,
                             const Ridge::AssetItemList& items) override
    {
        Pass("OnImportXMPFinished", &Next::OnImportXMPFinished, task, message, code, batch, taskItem, infos,
             items);
    }
    void OnReadXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code,
                           const UTF16String& mediaPath, const Guid& mediaInfo,
                           const Ridge::CustomMetadata& metadata, const Ridge::XMPText& xmp,
                           const UTF16String& createTime, const UTF16String& lastModifyTime,
                           const Guid& batch, const Guid& taskItem, const Ridge::ErrorRecordList& errors,
                           const Kiln::InterfaceRef<KilnUnknown>& requestContext) override
    {
        Pass("OnReadXMPFinished", &Next::OnReadXMPFinished, task, message, code, mediaPath, mediaInfo,
             metadata, xmp, createTime, lastModifyTime, batch, taskItem, errors, requestContext);
    }
    void OnRequestThumbnailStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                  const UTF16String& clipPath, const Guid& asset, tempora::TickTime startTime,
                                  const UTF16String& thumbPath, const Guid& batch,
                                  const Guid& taskItem) override
    {
        Pass("OnRequestThumbnailStatus", &Next::OnRequestThumbnailStatus, task, message, code, clipPath,
             asset, startTime, thumbPath, batch, taskItem);
    }
    void OnTransferProgress(const Guid& task, const Guid& message, std::int32_t percentage) override
    {
        Pass("OnTransferProgress", &Next::OnTransferProgress, task, message, percentage);
    }
    void OnTransferStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                          const Ridge::TransferResultList& results) override
    {
        Pass("OnTransferStatus", &Next::OnTransferStatus, task, message, code, results);
    }
    void OnRenameStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                        const Ridge::TransferResultList& results) override
    {
        Pass("OnRenameStatus", &Next::OnRenameStatus, task, message, code, results);
    }
    void OnGetMediaPropertyInfoStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                      const AC::MediaPropertyInfo& info) override
    {
        Pass("OnGetMediaPropertyInfoStatus", &Next::OnGetMediaPropertyInfoStatus, task, message, code, info);
    }
    void OnGetTargetBinPath(const Guid& task, const Guid& message) override
    {
        Pass("OnGetTargetBinPath", &Next::OnGetTargetBinPath, task, message);
    }
    void OnXMPFileTimeChanged(const Guid& task, const Guid& message, Ridge::ResultCode code,
                              const Ridge::ActionResultList& results) override
    {
        Pass("OnXMPFileTimeChanged", &Next::OnXMPFileTimeChanged, task, message, code, results);
    }

protected:
    const Kiln::InterfaceRef<Next>& GetNext() const { return mNext; }

private:
    template <class... Parameters, class... Arguments>
    void Pass(const char* callback, void (Next::*call)(Parameters...), const Arguments&... arguments)
    {
        mHook.Around(
            callback, [&] { (mNext.Get()->*call)(arguments...); }, arguments...);
    }

    const Kiln::InterfaceRef<Next> mNext;
    Hook mHook;
};

}  // namespace Recording
