// What recording costs the thread that is recorded.

#include "assetconnector/connectors/EventCatalogue.h"
#include "bench/Codec.h"
#include "recorder/Recorder.h"
#include "reference_host/ForwardingDispatcher.h"

#include <filesystem>
#include <memory>
#include <string>

namespace Bench {
namespace {

using ferrite::utility::Guid;
using Notifier = Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>;

/// The host behind a recorder, which is installed in its place as long as this object lives.
class RecordedHost
{
public:
    explicit RecordedHost(ReferenceHost::Host& host) : mHost(host), mRecorder(mHost.Services(), Options())
    {
        AC::UninstallHost();
        AC::InstallHost(mRecorder.Services());
    }
    ~RecordedHost()
    {
        AC::UninstallHost();
        AC::InstallHost(mHost.Services());
        std::filesystem::remove_all(Options().folder);
    }
    RecordedHost(const RecordedHost&) = delete;
    RecordedHost& operator=(const RecordedHost&) = delete;

    Recording::Recorder& GetRecorder() { return mRecorder; }

private:
    static Recording::Options Options()
    {
        Recording::Options options;
        options.folder = std::filesystem::temp_directory_path() / "assetconnector-bench-recordings";
        options.filesKept = 2;
        return options;
    }

    ReferenceHost::Host& mHost;
    Recording::Recorder mRecorder;
};

/// What a round needs; ends in the reverse order.
struct Stage
{
    std::unique_ptr<RecordedHost> host;
    ReferenceHost::IdleDispatcher dispatcher;
    Notifier connector;
};

}  // namespace

void MeasureRecorded(ReferenceHost::Host& host)
{
    Measure("callback/recorded", 1, [&host] {
        const auto stage = std::make_shared<Stage>();
        stage->host = std::make_unique<RecordedHost>(host);
        stage->connector = stage->host->GetRecorder().CreateIngestGlintLibraryConnector(nullptr);
        return Prepared{[stage] { stage->connector->OnTransferProgress(Guid(1, 2), Guid(3, 4), 50); }};
    });
    Measure("decode/request/1/recorded", 1, [&host] {
        const Work& work = WorkOf(WorkKinds()[2], 1);
        const auto stage = std::make_shared<Stage>();
        stage->host = std::make_unique<RecordedHost>(host);
        AC::AddTandemEvents();
        stage->connector = stage->host->GetRecorder().CreateIngestGlintLibraryConnector(&stage->dispatcher);
        return Prepared{[&host, &work, stage] {
            host.GetPanelEvents().Raise(AC::kPlexaEventType_GetAssociatedFiles, work.utf16);
        }};
    });
    Measure("station/recorded", 1, [&host] {
        const auto stage = std::make_shared<Stage>();
        stage->host = std::make_unique<RecordedHost>(host);
        stage->connector = stage->host->GetRecorder().CreateIngestMediaCollectionConnector(nullptr);
        return Prepared{[&host, stage] {
            stage->connector->OnIngestStarted(Guid(1, 2));
            host.GetStations().DeliverPosted();
        }};
    });
}

}  // namespace Bench
