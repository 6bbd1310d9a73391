#pragma once

#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"

#include <boost/function.hpp>

#include <utility>

namespace Conformance {

/// Hands the ingest dialog to a function, does nothing for all other requests.
class ProbeDispatcher : public ALD::IAssetLibraryDispatcher
{
public:
    using Action = boost::function<void(const UTF16String& targetBin)>;

    explicit ProbeDispatcher(Action action) : mAction(std::move(action)) {}

    void ShowIngestDialog(const Guid& /*task*/, const Guid& /*message*/,
                          const UTF16String& targetBin) override
    {
        mAction(targetBin);
    }

    void ReadXMPFile(const Guid&, const Guid&, const UTF16String&, const Guid&, const Guid&,
                     const Guid&) override
    {
    }
    void SaveAssetItems(const Guid&, const Guid&, const Ridge::AssetItemList&) override {}
    void CreateThumbnail(const Guid&, const Guid&, const UTF16String&, const tempora::TickTime&, const Guid&,
                         const Guid&, const Guid&) override
    {
    }
    void CompleteImportFile(const Guid&, const Guid&, const UTF16String&, const Guid&, const Guid&,
                            const Ridge::ResultCode&, const UTF16String&) override
    {
    }
    void StartMediaIngest(const Guid&, const Guid&, const AC::IngestMediaSettings&) override {}
    void WriteXMPFile(const Guid&, const Guid&, const boost::shared_ptr<Ridge::AssetMediaInfo>&) override {}
    void RefuseExit(Ridge::ResultCode) override {}
    void ExportAssets(const Guid&, const Guid&, const Ridge::AssetItemList&,
                      const Ridge::AssetMediaInfoList&) override
    {
    }
    void ReportPanelEvent(const Guid&, const Guid&, std::int32_t, const UTF16String&, bool) override {}
    void StartTransfer(const Guid&, const Guid&, const Ridge::TransferItemList&, std::int32_t,
                       const AC::FtpSetting&, std::int32_t) override
    {
    }
    void CancelTransfer(const Guid&, const Guid&) override {}
    void RenameItems(const Guid&, const Guid&, const AC::RenameItemList&) override {}
    void QueryMediaPropertyInfo(const Guid&, const Guid&, const UTF16String&, const Guid&) override {}
    void QueryAssociatedFiles(const Guid&, const Guid&, const UTF16String&) override {}
    void StartTranscode(const Guid&, const Guid&, const UTF16String&, const UTF16String&, bool,
                        const Ridge::TranscodeItemList&) override
    {
    }
    void StartConcatenation(const Guid&, const Guid&, const UTF16String&, const UTF16String&,
                            const UTF16String&, bool, const Ridge::ConcatenationItemList&) override
    {
    }
    void CancelTranscode(const Guid&, const Guid&) override {}
    void CancelConcatenation(const Guid&, const Guid&) override {}
    void QueryCurrentWorkMode(const Guid&, const Guid&) override {}
    void QueryMontaneInstalled(const Guid&, const Guid&) override {}
    void ApplyTagTemplate(const Guid&, const Guid&, const Ridge::TagTemplateInfoList&, std::int32_t) override
    {
    }

private:
    const Action mAction;
};

}  // namespace Conformance
