// This library: both directions of its codec, and what its connectors do.

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/connectors/SendRoad.h"
#include "bench/Codec.h"
#include "reference_host/ForwardingDispatcher.h"

#include <benchmark/benchmark.h>

namespace Bench {
namespace {

using ferrite::utility::Guid;

constexpr Guid kTask(1, 2);
constexpr Guid kMessage(3, 4);

Operation Decode(const Work& work)
{
    return [&text = work.utf16] {
        AC::ACMessage record;
        benchmark::DoNotOptimize(AC::ACMessageDecoder::DecodeXMLString(text, record));
    };
}

Operation Encode(const Work& work)
{
    return [&record = work.record] {
        benchmark::DoNotOptimize(AC::ACMessageEncoder::EncoderACMessage(record, AC::kNotificationRoot));
    };
}

/// What connectors send to panels.
Operation EncodeUTF8(const Work& work)
{
    return [&record = work.record] {
        benchmark::DoNotOptimize(AC::ACMessageEncoder::EncodeUTF8(record, AC::kNotificationRoot));
    };
}

/// The same with one layer of reserved characters decoded.
Operation EncodeForPanel(const Work& work)
{
    return [&record = work.record] { benchmark::DoNotOptimize(AC::EncodeDecodedNotification(record)); };
}

const AddedCodec kLibrary({"library", {Decode, true}, {Encode, true}, true});
const AddedCodec kUTF8({"utf8", {}, {EncodeUTF8, true}});
const AddedCodec kPanelText({"panelText", {}, {EncodeForPanel}});

/// The connector that two threads use.
Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> counted;

/// The record of the callback that is measured.
AC::ACMessage ProgressRecord()
{
    AC::ACMessage record;
    record.header.Set(kTask, kMessage, u"panel-1");
    record.percentage = 50;
    return record;
}

}  // namespace

void MeasureConnectors(ReferenceHost::Host& host)
{
    Measure("callback/library", 1, [] {
        return Prepared{[record = ProgressRecord()] {
            benchmark::DoNotOptimize(AC::ACMessageEncoder::EncoderACMessage(record, AC::kNotificationRoot));
        }};
    });
    Measure("callback/connector", 1, [] {
        return Prepared{[connector = AC::CreateIngestGlintLibraryConnector(nullptr)] {
            connector->OnTransferProgress(kTask, kMessage, 50);
        }};
    });
    Measure("decode/request/1/connector", 1, [&host] {
        static ReferenceHost::IdleDispatcher dispatcher;
        const Work& work = WorkOf(WorkKinds()[2], 1);
        host.GetPanelEvents().AddTandemEventListener(AC::kPlexaEventType_GetAssociatedFiles, nullptr);
        return Prepared{[&host, &work, connector = AC::CreateIngestGlintLibraryConnector(&dispatcher)] {
            host.GetPanelEvents().Raise(AC::kPlexaEventType_GetAssociatedFiles, work.utf16);
        }};
    });
    Measure("station/connector", 1, [&host] {
        return Prepared{[&host, connector = AC::CreateIngestMediaCollectionConnector(nullptr)] {
            connector->OnIngestStarted(kTask);
            host.GetStations().DeliverPosted();
        }};
    });
    benchmark::RegisterBenchmark("references/pair",
                                 [](benchmark::State& state) {
                                     for (auto unused : state) {
                                         counted->AddRef();
                                         counted->Release();
                                     }
                                     state.counters["items"] = {1, benchmark::Counter::kAvgThreads};
                                 })
        ->Threads(2)
        ->Setup([](const benchmark::State&) { counted = AC::CreateIngestGlintLibraryConnector(nullptr); })
        ->Teardown([](const benchmark::State&) { counted.Clear(); });
}

}  // namespace Bench
