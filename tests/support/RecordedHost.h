#pragma once

#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "reference_host/ForwardingDispatcher.h"
#include "tests/support/HostTest.h"
#include "tests/support/Recordings.h"

#include <boost/function.hpp>

#include <memory>
#include <stdexcept>

/// A dispatcher that does something of the host's own in each call.
class ActingDispatcher : public ReferenceHost::ForwardingDispatcher<ActingDispatcher>
{
public:
    ActingDispatcher() : ForwardingDispatcher(*this) {}

    template <class... Arguments>
    void operator()(const char* /*operation*/, const Arguments&... /*arguments*/)
    {
        if (act)
            act();
    }

    boost::function<void()> act;
};

/// A panel that does something in each notification.
struct ActingPanel : ReferenceHost::Panel
{
    void OnNotification(const std::string& /*type*/, const std::string& /*data*/) override
    {
        if (act)
            act();
    }
    boost::function<void()> act;
};

/// A recorded reference host whose posted messages are delivered by hand.
class RecordedHost : public testing::Test
{
protected:
    using Notifier = Recording::Recorder::Notifier;

    RecordedHost()
    {
        options.onTrouble = [this](const std::string& text) { troubles.push_back(text); };
    }
    ~RecordedHost() override { End(); }

    /// \param services What is recorded.
    void Begin(const AC::HostServices& services)
    {
        recorder = std::make_unique<Recording::Recorder>(services, options);
        installation =
            std::make_unique<ReferenceHost::Installation>(recorder->Services(), host.GetStations());
        host.GetPanelEvents().Attach(panel);
    }
    void Begin() { Begin(host.Services()); }
    void BeginWithConnectors()
    {
        Begin();
        MakeConnectors();
    }
    void MakeConnectors()
    {
        library = recorder->CreateIngestGlintLibraryConnector(&dispatcher);
        collection = recorder->CreateIngestMediaCollectionConnector(&dispatcher);
    }
    void End()
    {
        library.Clear();
        collection.Clear();
        installation.reset();
        recorder.reset();
    }

    void Raise(const UTF16String& type, const std::string& data)
    {
        host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(), Ridge::TandemEvent(type, U(data)));
    }

    /// Every file plays alone. \return How many there are.
    std::size_t ExpectReplays() const
    {
        const auto files = recordings.Files();
        for (const auto& file : files)
            EXPECT_EQ(Recordings::Difference(file), "") << file << '\n';
        return files.size();
    }

    /// \return How often the text is in the files.
    std::size_t CountOf(std::string_view text) const
    {
        const std::string in = recordings.Text();
        std::size_t count = 0;
        for (std::size_t at = in.find(text); at != std::string::npos; at = in.find(text, at + 1))
            ++count;
        return count;
    }

    ReferenceHost::Host host{ReferenceHost::Stations::Delivery::kByHand};
    Recordings recordings;
    Recording::Options options = recordings.Options();
    std::vector<std::string> troubles;
    ActingDispatcher dispatcher;
    boost::shared_ptr<ActingPanel> panel = boost::make_shared<ActingPanel>();
    std::unique_ptr<Recording::Recorder> recorder;
    std::unique_ptr<ReferenceHost::Installation> installation;
    Notifier library;
    Notifier collection;
};

constexpr const char* kReadRequest =
    "<browserMessage><assetMediaInfoList><assetMediaInfo/></assetMediaInfoList></browserMessage>";
constexpr const char* kImportRequest =
    "<browserMessage><fileList><filePath path=\"/a\"/></fileList></browserMessage>";
