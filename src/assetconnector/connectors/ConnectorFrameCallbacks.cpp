// The callbacks. Both connectors fill all but two alike; each connector's table says what becomes of the
// record.

#include "assetconnector/connectors/CallbackReports.h"
#include "assetconnector/connectors/ConnectorFrame.h"
#include "assetconnector/connectors/ConnectorTables.h"
#include "assetconnector/connectors/SendRoad.h"
#include "assetconnector/message/ResultNames.h"

namespace AC {
namespace {

using ferrite::utility::Guid;

/// For callbacks that name no message, or no task either.
constexpr Guid kNone;

void FillNothing(ACMessage& /*record*/) {}

const UTF16String& NameOfSign(Ridge::ResultCode code)
{
    return code < 0 ? kACMessage_ResultFailure : kACMessage_ResultOK;
}

auto FillTasks(const Ridge::GuidList& tasks)
{
    return [&tasks](ACMessage& record) { record.taskIDList = tasks; };
}

auto FillPercentage(std::int32_t percentage)
{
    return [percentage](ACMessage& record) { record.percentage = percentage; };
}

auto FillMediaInfos(const Ridge::AssetMediaInfoList& infos)
{
    return [&infos](ACMessage& record) { record.assetMediaInfoList = infos; };
}

auto FillConversion(Ridge::ResultCode code, const UTF16String& error, const UTF16String& outputPath)
{
    return [code, &error, &outputPath](ACMessage& record) {
        record.result = ResultName(code);
        record.errorInfo = error;
        record.outputFilePath = outputPath;
    };
}

auto FillTransferResults(Ridge::ResultCode code, const Ridge::TransferResultList& results)
{
    return [code, &results](ACMessage& record) {
        record.result = ResultName(code);
        record.transferResultList = results;
    };
}

}  // namespace

void ConnectorFrame::OnIngestStarted(const Guid& task)
{
    AC::Report(RowOf(mTables, Callback::OnIngestStarted), task, kNone, FillNothing);
}

void ConnectorFrame::OnIngestFinished(const Guid& task)
{
    AC::Report(RowOf(mTables, Callback::OnIngestFinished), task, kNone, FillNothing);
}

void ConnectorFrame::OnIngestCancelled(const Guid& task)
{
    AC::Report(RowOf(mTables, Callback::OnIngestCancelled), task, kNone, FillNothing);
}

void ConnectorFrame::OnIngestPaused(const Ridge::GuidList& tasks)
{
    AC::Report(RowOf(mTables, Callback::OnIngestPaused), kNone, kNone, FillTasks(tasks));
}

void ConnectorFrame::OnIngestResumed(const Ridge::GuidList& tasks)
{
    AC::Report(RowOf(mTables, Callback::OnIngestResumed), kNone, kNone, FillTasks(tasks));
}

void ConnectorFrame::OnIngestItemsReady(const Guid& task, const Guid& batch, const Guid& taskItem,
                                        const Ridge::IngestItemList& items,
                                        const Ridge::CustomMetadata& metadata)
{
    if (items.empty())
        return;
    AC::Report(RowOf(mTables, Callback::OnIngestItemsReady), task, kNone, [&](ACMessage& record) {
        record.taskItemID = taskItem;
        record.batchID = batch;
        record.ingestItemList = items;
        record.customMetadata = metadata;
    });
}

void ConnectorFrame::OnBackupItemsReady(const Guid& task, const Guid& batch,
                                        const Ridge::IngestItemList& items,
                                        const Ridge::CustomMetadata& metadata)
{
    if (items.empty())
        return;
    AC::Report(RowOf(mTables, Callback::OnBackupItemsReady), task, kNone, [&](ACMessage& record) {
        record.batchID = batch;
        record.ingestItemList = items;
        record.customMetadata = metadata;
    });
}

void ConnectorFrame::OnIngestBatchStarted(const Guid& task, const Guid& batch, const UTF16String& targetBin)
{
    if (batch.IsZero())
        return;
    AC::Report(RowOf(mTables, Callback::OnIngestBatchStarted), task, kNone, [&](ACMessage& record) {
        record.batchID = batch;
        record.targetBin = targetBin;
    });
}

void ConnectorFrame::OnIngestBatchFinished(const Guid& task, const Guid& batch)
{
    if (batch.IsZero())
        return;
    AC::Report(RowOf(mTables, Callback::OnIngestBatchFinished), task, kNone,
               [&batch](ACMessage& record) { record.batchID = batch; });
}

void ConnectorFrame::OnInitMiniMetadata(const Guid& task, const Guid& message,
                                        const Ridge::IngestItemList& items)
{
    AC::Report(RowOf(mTables, Callback::OnInitMiniMetadata), task, message,
               [&items](ACMessage& record) { record.ingestItemList = items; });
}

void ConnectorFrame::OnTranscodeStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                       const UTF16String& error, const UTF16String& outputPath)
{
    AC::Report(RowOf(mTables, Callback::OnTranscodeStatus), task, message,
               FillConversion(code, error, outputPath));
}

void ConnectorFrame::OnConcatenationStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                           const UTF16String& error, const UTF16String& outputPath)
{
    AC::Report(RowOf(mTables, Callback::OnConcatenationStatus), task, message,
               FillConversion(code, error, outputPath));
}

void ConnectorFrame::OnTranscodeProgress(const Guid& task, const Guid& message, std::int32_t percentage)
{
    AC::Report(RowOf(mTables, Callback::OnTranscodeProgress), task, message, FillPercentage(percentage));
}

void ConnectorFrame::OnConcatenationProgress(const Guid& task, const Guid& message, std::int32_t percentage)
{
    AC::Report(RowOf(mTables, Callback::OnConcatenationProgress), task, message, FillPercentage(percentage));
}

void ConnectorFrame::OnSaveAsset(const Guid& task, const Guid& message,
                                 const Ridge::AssetMediaInfoList& infos,
                                 const boost::shared_ptr<Ridge::AssetItem>& item, bool saveFlag)
{
    AC::Report(RowOf(mTables, Callback::OnSaveAsset), task, message, [&](ACMessage& record) {
        record.assetMediaInfoList = infos;
        if (item)
            record.assetItemList.push_back(item);
        record.saveFlag = saveFlag;  // for station listeners: no notification carries it
    });
}

void ConnectorFrame::OnTriggerSaveAssetStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                              const UTF16String& error,
                                              const Ridge::AssetMediaInfoList& infos)
{
    AC::Report(RowOf(mTables, Callback::OnTriggerSaveAssetStatus), task, message, [&](ACMessage& record) {
        record.result = NameOfSign(code);
        if (code < 0)
            record.errorInfo = error;
        else
            record.assetMediaInfoList = infos;
    });
}

void ConnectorFrame::OnFileChanged(const Guid& task, const Guid& message,
                                   const boost::shared_ptr<Ridge::AssetMediaInfo>& info,
                                   Ridge::ResultCode code)
{
    AC::Report(RowOf(mTables, Callback::OnFileChanged), task, message, [&](ACMessage& record) {
        record.result = ResultName(code);
        if (info)
            record.assetMediaInfoList.push_back(info);
    });
}

void ConnectorFrame::OnFileOffLine(const Guid& task, const Guid& message, const Ridge::PathList& paths)
{
    AC::Report(RowOf(mTables, Callback::OnFileOffLine), task, message,
               [&paths](ACMessage& record) { record.fileList = paths; });
}

void ConnectorFrame::OnXMPChanged(const Guid& task, const Guid& message,
                                  const Ridge::AssetMediaInfoList& infos)
{
    AC::Report(RowOf(mTables, Callback::OnXMPChanged), task, message, FillMediaInfos(infos));
}

void ConnectorFrame::OnMediaInfoChanged(const Guid& task, const Guid& message,
                                        const Ridge::AssetMediaInfoList& infos)
{
    AC::Report(RowOf(mTables, Callback::OnMediaInfoChanged), task, message, FillMediaInfos(infos));
}

void ConnectorFrame::OnImportXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                         const Guid& batch, const Guid& taskItem,
                                         const Ridge::AssetMediaInfoList& infos,
                                         const Ridge::AssetItemList& items)
{
    Report(ImportXMPReport{task, message, code, batch, taskItem, infos, items});
}

void ConnectorFrame::OnReadXMPFinished(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                       const UTF16String& mediaPath, const Guid& mediaInfo,
                                       const Ridge::CustomMetadata& metadata, const Ridge::XMPText& xmp,
                                       const UTF16String& createTime, const UTF16String& lastModifyTime,
                                       const Guid& batch, const Guid& taskItem,
                                       const Ridge::ErrorRecordList& errors,
                                       const Kiln::InterfaceRef<KilnUnknown>& requestContext)
{
    Report(ReadXMPReport{task, message, code, mediaPath, mediaInfo, metadata, xmp, createTime, lastModifyTime,
                         batch, taskItem, errors, requestContext});
}

void ConnectorFrame::OnRequestThumbnailStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                              const UTF16String& clipPath, const Guid& asset,
                                              tempora::TickTime startTime, const UTF16String& thumbPath,
                                              const Guid& batch, const Guid& taskItem)
{
    AC::Report(RowOf(mTables, Callback::OnRequestThumbnailStatus), task, message, [&](ACMessage& record) {
        record.thumbnailRequest = {asset, clipPath, code < 0 ? UTF16String() : thumbPath, startTime};
        record.batchID = batch;
        record.taskItemID = taskItem;
        record.result = NameOfSign(code);
    });
}

void ConnectorFrame::OnTransferProgress(const Guid& task, const Guid& message, std::int32_t percentage)
{
    AC::Report(RowOf(mTables, Callback::OnTransferProgress), task, message, FillPercentage(percentage));
}

void ConnectorFrame::OnTransferStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                      const Ridge::TransferResultList& results)
{
    AC::Report(RowOf(mTables, Callback::OnTransferStatus), task, message, FillTransferResults(code, results));
}

void ConnectorFrame::OnRenameStatus(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                    const Ridge::TransferResultList& results)
{
    AC::Report(RowOf(mTables, Callback::OnRenameStatus), task, message, FillTransferResults(code, results));
}

void ConnectorFrame::OnGetMediaPropertyInfoStatus(const Guid& task, const Guid& message,
                                                  Ridge::ResultCode code, const MediaPropertyInfo& info)
{
    AC::Report(RowOf(mTables, Callback::OnGetMediaPropertyInfoStatus), task, message, [&](ACMessage& record) {
        record.result = NameOfSign(code);
        record.mediaPropertyInfo = info;
    });
}

void ConnectorFrame::OnGetTargetBinPath(const Guid& task, const Guid& message)
{
    AC::Report(RowOf(mTables, Callback::OnGetTargetBinPath), task, message, FillNothing);
}

void ConnectorFrame::OnXMPFileTimeChanged(const Guid& task, const Guid& message, Ridge::ResultCode code,
                                          const Ridge::ActionResultList& results)
{
    AC::Report(RowOf(mTables, Callback::OnXMPFileTimeChanged), task, message, [&](ACMessage& record) {
        record.actionResultList = results;
        record.result = ResultName(code);
    });
}

}  // namespace AC
