#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "reference_host/Forwarders.h"

#include <utility>

namespace ReferenceHost {

/// The forwarder of the asset library dispatcher: as the ones of Forwarders.h, but the operations have their
/// bare names ("ReadXMPFile"), and there need not be another dispatcher behind it.
template <class Hook>
class ForwardingDispatcher : public ALD::IAssetLibraryDispatcher
{
    using Next = ALD::IAssetLibraryDispatcher;

public:
    /// \param next Null: calls end at the hook.
    explicit ForwardingDispatcher(Hook& hook, ALD::IAssetLibraryDispatcher* next = nullptr)
        : mHook(hook), mNext(next)
    {
    }

    void ReadXMPFile(const Guid& task, const Guid& message, const UTF16String& path, const Guid& asset,
                     const Guid& batch, const Guid& taskItem) override
    {
        Pass("ReadXMPFile", &Next::ReadXMPFile, task, message, path, asset, batch, taskItem);
    }
    void SaveAssetItems(const Guid& task, const Guid& message, const Ridge::AssetItemList& items) override
    {
        Pass("SaveAssetItems", &Next::SaveAssetItems, task, message, items);
    }
    void CreateThumbnail(const Guid& task, const Guid& message, const UTF16String& clipPath,
                         const tempora::TickTime& startTime, const Guid& asset, const Guid& batch,
                         const Guid& taskItem) override
    {
        Pass("CreateThumbnail", &Next::CreateThumbnail, task, message, clipPath, startTime, asset, batch,
             taskItem);
    }
    void CompleteImportFile(const Guid& task, const Guid& message, const UTF16String& path, const Guid& batch,
                            const Guid& taskItem, const Ridge::ResultCode& result,
                            const UTF16String& error) override
    {
        Pass("CompleteImportFile", &Next::CompleteImportFile, task, message, path, batch, taskItem, result,
             error);
    }
    void ShowIngestDialog(const Guid& task, const Guid& message, const UTF16String& targetBin) override
    {
        Pass("ShowIngestDialog", &Next::ShowIngestDialog, task, message, targetBin);
    }
    void StartMediaIngest(const Guid& task, const Guid& message,
                          const AC::IngestMediaSettings& settings) override
    {
        Pass("StartMediaIngest", &Next::StartMediaIngest, task, message, settings);
    }
    void WriteXMPFile(const Guid& task, const Guid& message,
                      const boost::shared_ptr<Ridge::AssetMediaInfo>& info) override
    {
        Pass("WriteXMPFile", &Next::WriteXMPFile, task, message, info);
    }
    void RefuseExit(Ridge::ResultCode code) override { Pass("RefuseExit", &Next::RefuseExit, code); }
    void ExportAssets(const Guid& task, const Guid& message, const Ridge::AssetItemList& items,
                      const Ridge::AssetMediaInfoList& infos) override
    {
        Pass("ExportAssets", &Next::ExportAssets, task, message, items, infos);
    }
    void ReportPanelEvent(const Guid& task, const Guid& message, std::int32_t level, const UTF16String& text,
                          bool showMessage) override
    {
        Pass("ReportPanelEvent", &Next::ReportPanelEvent, task, message, level, text, showMessage);
    }
    void StartTransfer(const Guid& task, const Guid& message, const Ridge::TransferItemList& items,
                       std::int32_t option, const AC::FtpSetting& ftp, std::int32_t type) override
    {
        Pass("StartTransfer", &Next::StartTransfer, task, message, items, option, ftp, type);
    }
    void CancelTransfer(const Guid& task, const Guid& message) override
    {
        Pass("CancelTransfer", &Next::CancelTransfer, task, message);
    }
    void RenameItems(const Guid& task, const Guid& message, const AC::RenameItemList& items) override
    {
        Pass("RenameItems", &Next::RenameItems, task, message, items);
    }
    void QueryMediaPropertyInfo(const Guid& task, const Guid& message, const UTF16String& path,
                                const Guid& asset) override
    {
        Pass("QueryMediaPropertyInfo", &Next::QueryMediaPropertyInfo, task, message, path, asset);
    }
    void QueryAssociatedFiles(const Guid& task, const Guid& message, const UTF16String& path) override
    {
        Pass("QueryAssociatedFiles", &Next::QueryAssociatedFiles, task, message, path);
    }
    void StartTranscode(const Guid& task, const Guid& message, const UTF16String& presetPath,
                        const UTF16String& outputDirectory, bool outputXMP,
                        const Ridge::TranscodeItemList& items) override
    {
        Pass("StartTranscode", &Next::StartTranscode, task, message, presetPath, outputDirectory, outputXMP,
             items);
    }
    void StartConcatenation(const Guid& task, const Guid& message, const UTF16String& presetPath,
                            const UTF16String& outputDirectory, const UTF16String& outputFileName,
                            bool outputXMP, const Ridge::ConcatenationItemList& items) override
    {
        Pass("StartConcatenation", &Next::StartConcatenation, task, message, presetPath, outputDirectory,
             outputFileName, outputXMP, items);
    }
    void CancelTranscode(const Guid& task, const Guid& message) override
    {
        Pass("CancelTranscode", &Next::CancelTranscode, task, message);
    }
    void CancelConcatenation(const Guid& task, const Guid& message) override
    {
        Pass("CancelConcatenation", &Next::CancelConcatenation, task, message);
    }
    void QueryCurrentWorkMode(const Guid& task, const Guid& message) override
    {
        Pass("QueryCurrentWorkMode", &Next::QueryCurrentWorkMode, task, message);
    }
    void QueryMontaneInstalled(const Guid& task, const Guid& message) override
    {
        Pass("QueryMontaneInstalled", &Next::QueryMontaneInstalled, task, message);
    }
    void ApplyTagTemplate(const Guid& task, const Guid& message, const Ridge::TagTemplateInfoList& infos,
                          std::int32_t option) override
    {
        Pass("ApplyTagTemplate", &Next::ApplyTagTemplate, task, message, infos, option);
    }

private:
    template <class... Parameters, class... Arguments>
    void Pass(const char* operation, void (Next::*call)(Parameters...), const Arguments&... arguments)
    {
        const auto next = [&] {
            if (mNext != nullptr)
                (mNext->*call)(arguments...);
        };
        Detail::CallThrough(mHook, 0, operation, next, arguments...);
    }

    Hook& mHook;
    ALD::IAssetLibraryDispatcher* mNext;
};

/// A hook that does nothing.
struct NoHook
{
    template <class... Arguments>
    void operator()(const char* /*operation*/, const Arguments&... /*arguments*/) const
    {
    }
};

/// Does nothing: the base of hosts that carry out only some of the operations.
class IdleDispatcher : public ForwardingDispatcher<const NoHook>
{
public:
    IdleDispatcher() : ForwardingDispatcher(kNoHook) {}

private:
    AC_CONSTANT static constexpr NoHook kNoHook{};
};

}  // namespace ReferenceHost
