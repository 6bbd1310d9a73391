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
class AC_API ConnectorFrame : public Ridge::IIngestLibraryNotifier,
                              public IAssetConnectorPrivate,
                              public Kiln::Listener
{
public:
    ConnectorFrame(const ConnectorFrame&) = delete;
    ConnectorFrame& operator=(const ConnectorFrame&) = delete;

    // KilnUnknown
    void AddRef() override;
    void Release() override;
    ~ConnectorFrame() override;
    std::int32_t QueryInterface(const Guid& interfaceID, void*& out) override;
    KilnUnknown* GetRawPointer() override;

    // Ridge::IIngestLibraryNotifier
    void OnIngestStarted(const Guid& task) override;
    void OnIngestFinished(const Guid& task) override;
    void OnIngestCancelled(const Guid& task) override;
    void OnIngestPaused(const Ridge::GuidList& tasks) override;
    void OnIngestResumed(const Ridge::GuidList& tasks) override;
    void OnIngestItemsReady(const Guid& task, const Guid& batch, const Guid& taskItem,
                            const Ridge::IngestItemList& items,
                            const Ridge::CustomMetadata& metadata) override;
    void OnBackupItemsReady(const Guid& task, const Guid& batch, const Ridge::IngestItemList& items,
                            const Ridge::CustomMetadata& metadata) override;
    void OnIngestBatchStarted(const Guid& task, const Guid& batch, const UTF16String& targetBin) override;
    void OnIngestBatchFinished(const Guid& task, const Guid& batch) override;
    void OnInitMiniMetadata(const Guid& task, const Guid& message,
                            const Ridge::IngestItemList& items) override;
    void OnTranscodeStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                           const UTF16String& error, const UTF16String& outputPath) override;
    void OnConcatenationStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                               const UTF16String& error, const UTF16String& outputPath) override;
    void OnTranscodeProgress(const Guid& task, const Guid& message, std::int32_t percentage) override;
    void OnConcatenationProgress(const Guid& task, const Guid& message, std::int32_t percentage) override;
    void OnSaveAsset(const Guid& task, const Guid& message, const Ridge::AssetMediaInfoList& infos,
                     const boost::shared_ptr<Ridge::AssetItem>& item, bool saveFlag) override;
    void OnTriggerSaveAssetStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                  const UTF16String& error, const Ridge::AssetMediaInfoList& infos) override;
    void OnFileChanged(const Guid& task, const Guid& message,
                       const boost::shared_ptr<Ridge::AssetMediaInfo>& info, Ridge::ResultCode code) override;
    void OnFileOffLine(const Guid& task, const Guid& message, const Ridge::PathList& paths) override;
    void OnXMPChanged(const Guid& task, const Guid& message, const Ridge::AssetMediaInfoList& infos) override;
    void OnMediaInfoChanged(const Guid& task, const Guid& message,
                            const Ridge::AssetMediaInfoList& infos) override;
    void OnImportXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code, const Guid& batch,
                             const Guid& taskItem, const Ridge::AssetMediaInfoList& infos,
                             const Ridge::AssetItemList& items) override;
    void OnReadXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code,
                           const UTF16String& mediaPath, const Guid& mediaInfo,
                           const Ridge::CustomMetadata& metadata, const Ridge::XMPText& xmp,
                           const UTF16String& createTime, const UTF16String& lastModifyTime,
                           const Guid& batch, const Guid& taskItem, const Ridge::ErrorRecordList& errors,
                           const Kiln::InterfaceRef<KilnUnknown>& requestContext) override;
    void OnRequestThumbnailStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                  const UTF16String& clipPath, const Guid& asset, tempora::TickTime startTime,
                                  const UTF16String& thumbPath, const Guid& batch,
                                  const Guid& taskItem) override;
    void OnTransferProgress(const Guid& task, const Guid& message, std::int32_t percentage) override;
    void OnTransferStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                          const Ridge::TransferResultList& results) override;
    void OnRenameStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                        const Ridge::TransferResultList& results) override;
    void OnGetMediaPropertyInfoStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                      const MediaPropertyInfo& info) override;
    void OnGetTargetBinPath(const Guid& task, const Guid& message) override;
    void OnXMPFileTimeChanged(const Guid& task, const Guid& message, Ridge::ResultCode code,
                              const Ridge::ActionResultList& results) override;

    /// \return A counted reference to this connector.
    virtual Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> GetInterfaceRef();

    /// \return A handle that tells whether this connector still exists, and outlives it.
    virtual Kiln::SharedReferenceBroker GetReferenceBroker();

    // IAssetConnectorPrivate
    void SetDispatcher(ALD::IAssetLibraryDispatcher* dispatcher) override;

protected:
    /// \param tables Of static storage.
    AC_LOCAL explicit ConnectorFrame(const ConnectorTables& tables);

    /// Subscribes to the stations of the tables. The last statement of a connector's constructor: from then
    /// on messages arrive, on any thread. If a subscription fails, those before it are ended again.
    AC_LOCAL void Subscribe();

    ALD::IAssetLibraryDispatcher* Dispatcher() const noexcept { return mDispatcher.load(); }

private:
    friend class ConnectorFactory;

    void OnStationMessage(const Kiln::Message& message) override;

    /// A panel raised a request. Here it goes by the tables; a connector that gives its own requests more
    /// than that overrides it. Reads the dispatcher once and touches no member after calling it.
    virtual void OnPanelRequest(const UTF16String& type, const UTF16String& data);

    /// Reports in the connector's own way.
    virtual void Report(const ImportXMPReport& report) = 0;
    virtual void Report(const ReadXMPReport& report) = 0;

    const ConnectorTables& mTables;
    Kiln::SharedReferenceBroker mBroker;
    std::atomic<ALD::IAssetLibraryDispatcher*> mDispatcher{nullptr};
};

}  // namespace AC
