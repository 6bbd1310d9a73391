#pragma once

#include "assetconnector/connectors/IAssetConnectorPrivate.h"
#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/ReferenceBroker.h"
#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"

#include <atomic>

namespace AC {

struct ConnectorTables;
struct ImportXMPReport;
struct ReadXMPReport;

/// What both connectors are: counted objects that listen on stations, turn the callbacks of the ingest
/// library into notifications and station messages, and hand panel requests on. A connector differs by its
/// tables and by what it does with the two reports that are left open here. Made by the two factories alone.
///
/// Threads: every operation may be called on any thread, several at once. A connector takes no lock: each
/// call works on a record of its own. It may be destroyed from inside a call that it makes.
class AC_API_PARTS ConnectorFrame : public Ridge::IIngestLibraryNotifier,
                                    public IAssetConnectorPrivate,
                                    public Kiln::Listener
{
public:
    ConnectorFrame(const ConnectorFrame&) = delete;
    ConnectorFrame& operator=(const ConnectorFrame&) = delete;

    // KilnUnknown
    AC_API void AddRef() override;
    AC_API void Release() override;
    AC_API ~ConnectorFrame() override;
    AC_API std::int32_t QueryInterface(const Guid& interfaceID, void*& out) override;
    AC_API KilnUnknown* GetRawPointer() override;

    // Ridge::IIngestLibraryNotifier
    AC_API void OnIngestStarted(const Guid& task) override;
    AC_API void OnIngestFinished(const Guid& task) override;
    AC_API void OnIngestCancelled(const Guid& task) override;
    AC_API void OnIngestPaused(const Ridge::GuidList& tasks) override;
    AC_API void OnIngestResumed(const Ridge::GuidList& tasks) override;
    AC_API void OnIngestItemsReady(const Guid& task, const Guid& batch, const Guid& taskItem,
                                   const Ridge::IngestItemList& items,
                                   const Ridge::CustomMetadata& metadata) override;
    AC_API void OnBackupItemsReady(const Guid& task, const Guid& batch, const Ridge::IngestItemList& items,
                                   const Ridge::CustomMetadata& metadata) override;
    AC_API void OnIngestBatchStarted(const Guid& task, const Guid& batch,
                                     const UTF16String& targetBin) override;
    AC_API void OnIngestBatchFinished(const Guid& task, const Guid& batch) override;
    AC_API void OnInitMiniMetadata(const Guid& task, const Guid& message,
                                   const Ridge::IngestItemList& items) override;
    AC_API void OnTranscodeStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                  const UTF16String& error, const UTF16String& outputPath) override;
    AC_API void OnConcatenationStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                      const UTF16String& error, const UTF16String& outputPath) override;
    AC_API void OnTranscodeProgress(const Guid& task, const Guid& message, std::int32_t percentage) override;
    AC_API void OnConcatenationProgress(const Guid& task, const Guid& message,
                                        std::int32_t percentage) override;
    AC_API void OnSaveAsset(const Guid& task, const Guid& message, const Ridge::AssetMediaInfoList& infos,
                            const boost::shared_ptr<Ridge::AssetItem>& item, bool saveFlag) override;
    AC_API void OnTriggerSaveAssetStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                         const UTF16String& error,
                                         const Ridge::AssetMediaInfoList& infos) override;
    AC_API void OnFileChanged(const Guid& task, const Guid& message,
                              const boost::shared_ptr<Ridge::AssetMediaInfo>& info,
                              Ridge::ResultCode code) override;
    AC_API void OnFileOffLine(const Guid& task, const Guid& message, const Ridge::PathList& paths) override;
    AC_API void OnXMPChanged(const Guid& task, const Guid& message,
                             const Ridge::AssetMediaInfoList& infos) override;
    AC_API void OnMediaInfoChanged(const Guid& task, const Guid& message,
                                   const Ridge::AssetMediaInfoList& infos) override;
    AC_API void OnImportXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                    const Guid& batch, const Guid& taskItem,
                                    const Ridge::AssetMediaInfoList& infos,
                                    const Ridge::AssetItemList& items) override;
    AC_API void OnReadXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                  const UTF16String& mediaPath, const Guid& mediaInfo,
                                  const Ridge::CustomMetadata& metadata, const Ridge::XMPText& xmp,
                                  const UTF16String& createTime, const UTF16String& lastModifyTime,
                                  const Guid& batch, const Guid& taskItem,
                                  const Ridge::ErrorRecordList& errors,
                                  const Kiln::InterfaceRef<KilnUnknown>& requestContext) override;
    AC_API void OnRequestThumbnailStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                         const UTF16String& clipPath, const Guid& asset,
                                         tempora::TickTime startTime, const UTF16String& thumbPath,
                                         const Guid& batch, const Guid& taskItem) override;
    AC_API void OnTransferProgress(const Guid& task, const Guid& message, std::int32_t percentage) override;
    AC_API void OnTransferStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                 const Ridge::TransferResultList& results) override;
    AC_API void OnRenameStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                               const Ridge::TransferResultList& results) override;
    AC_API void OnGetMediaPropertyInfoStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                             const MediaPropertyInfo& info) override;
    AC_API void OnGetTargetBinPath(const Guid& task, const Guid& message) override;
    AC_API void OnXMPFileTimeChanged(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                     const Ridge::ActionResultList& results) override;

    /// \return A counted reference to this connector.
    AC_API virtual Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> GetInterfaceRef();

    /// \return A handle that tells whether this connector still exists, and outlives it.
    AC_API virtual Kiln::SharedReferenceBroker GetReferenceBroker();

    // IAssetConnectorPrivate
    AC_API void SetDispatcher(ALD::IAssetLibraryDispatcher* dispatcher) override;

protected:
    /// \param tables Of static storage.
    AC_LOCAL explicit ConnectorFrame(const ConnectorTables& tables);

    /// Subscribes to the stations of the tables. The last statement of a connector's constructor: from then
    /// on messages arrive, on any thread. If a subscription fails, those before it are ended again.
    AC_LOCAL void Subscribe();

    ALD::IAssetLibraryDispatcher* Dispatcher() const noexcept { return mDispatcher.load(); }

private:
    friend class ConnectorFactory;

    AC_API void OnStationMessage(const Kiln::Message& message) override;

    /// A panel raised a request. Here it goes by the tables; a connector that gives its own requests more
    /// than that overrides it. Reads the dispatcher once and touches no member after calling it.
    AC_API virtual void OnPanelRequest(const UTF16String& type, const UTF16String& data);

    /// Reports in the connector's own way.
    virtual void Report(const ImportXMPReport& report) = 0;
    virtual void Report(const ReadXMPReport& report) = 0;

    const ConnectorTables& mTables;
    Kiln::SharedReferenceBroker mBroker;
    std::atomic<ALD::IAssetLibraryDispatcher*> mDispatcher{nullptr};
};

}  // namespace AC
