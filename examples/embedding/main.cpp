// A small host. It brings what is its own, the panel events and a dispatcher, and takes the other services
// from the reference host, as a host may do while it grows. With a folder as argument it records itself
// there.

#include "Panels.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/XMLPlatform.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "recorder/Recorder.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/Host.h"

#include <exception>
#include <iostream>
#include <string>

namespace {

using ferrite::utility::Guid;

/// Carries out what panels ask for; here, one thing.
class Dispatcher : public ReferenceHost::IdleDispatcher
{
public:
    void ShowIngestDialog(const Guid& task, const Guid& /*message*/, const UTF16String& targetBin) override
    {
        std::cout << "dispatcher: show the ingest dialog for \"" << ferrite::utility::UTF16to8(targetBin)
                  << "\", task " << ferrite::utility::UTF16to8(task.AsString()) << "\n";
    }
};

/// A component of the host that wants to know of ingested items.
class IngestWatcher : public Kiln::Listener
{
public:
    IngestWatcher() { Kiln::StationUtils::AddListener(AC::GetMCAssetConnectorStation(), this); }
    ~IngestWatcher() override { EndSubscriptions(); }

private:
    void OnStationMessage(const Kiln::Message& message) override
    {
        if (message.MessageTypeID() != AC::IngestStartedMessage::TypeID())
            return;
        const AC::ACMessage& record = static_cast<const AC::IngestStartedMessage&>(message).GetPayload();
        std::cout << "component: ingest started, task "
                  << ferrite::utility::UTF16to8(record.header.taskID.AsString()) << "\n";
    }
};

/// \param folder Of the recording.
void RunHost(const std::string& folder)
{
    Panels panels(std::cout);
    ReferenceHost::Stations stations(ReferenceHost::Stations::Delivery::kByHand);
    ReferenceHost::IngestLibrary library;
    ReferenceHost::Files files;
    ReferenceHost::Texts texts;
    ReferenceHost::Memory memory;
    Recording::Options options;
    options.folder = folder;  // without one nothing is recorded
    options.onTrouble = [](const std::string& trouble) { std::cerr << "recorder: " << trouble << "\n"; };
    Recording::Recorder recorder({panels, stations, library, files, texts, memory}, options);
    // Uninstalls at the end, and drops what is still posted while the memory service lives.
    const ReferenceHost::Installation installation(recorder.Services(), stations);
    AC::AddTandemEvents();

    Dispatcher dispatcher;
    const auto libraryConnector = recorder.CreateIngestGlintLibraryConnector(&dispatcher);
    const auto mediaCollectionConnector = recorder.CreateIngestMediaCollectionConnector(nullptr);
    const IngestWatcher watcher;

    panels.Raise(AC::kPlexaEventType_OpenIngestDlg,
                 u"<browserMessage><browserID ID=\"panel-1\"/>"
                 u"<taskID ID=\"10000000-0000-4000-8000-000000000001\"/>"
                 u"<msgID ID=\"20000000-0000-4000-8000-000000000002\"/>"
                 u"<targetBin ID=\"Interviews\"/></browserMessage>");

    const Guid task = Guid::CreateUnique();
    libraryConnector->OnIngestStarted(task);
    mediaCollectionConnector->OnIngestStarted(task);
    stations.DeliverPosted();  // a host with a user-interface thread does this there
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        const AC::XMLPlatform platform;  // once, before anything else
        RunHost(argc > 1 ? argv[1] : "");
        return 0;
    } catch (const std::exception& exception) {
        std::cerr << "embedding: " << exception.what() << "\n";
        return 1;
    }
}
