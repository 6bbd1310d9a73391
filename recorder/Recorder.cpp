#include "recorder/Recorder.h"

#include "assetconnector/connectors/ConnectorAccess.h"
#include "assetconnector/registration/ACUtils.h"
#include "recorder/ConnectorProxy.h"
#include "recorder/PanelEvents.h"
#include "recorder/SessionWriter.h"
#include "recorder/Stations.h"
#include "reference_host/Forwarders.h"
#include "reference_host/ForwardingDispatcher.h"

#include <list>
#include <new>
#include <thread>
#include <utility>

namespace Recording {
namespace {

constexpr std::chrono::milliseconds kBetweenWrites{50};

/// One of the host's dispatchers, wrapped for the connectors of one kind.
class WrappedDispatcher
{
public:
    WrappedDispatcher(Hook& hook, Kind kind, ALD::IAssetLibraryDispatcher& next)
        : mNext(&next), mKind(kind), mHook(hook, kind), mForwarder(mHook, &next)
    {
    }

    bool Wraps(Kind kind, const ALD::IAssetLibraryDispatcher* next) const
    {
        return mKind == kind && mNext == next;
    }
    ALD::IAssetLibraryDispatcher* Get() { return &mForwarder; }

private:
    const ALD::IAssetLibraryDispatcher* const mNext;
    const Kind mKind;
    DispatcherHook mHook;
    ReferenceHost::ForwardingDispatcher<DispatcherHook> mForwarder;
};

}  // namespace

class Recorder::Implementation
{
public:
    Implementation(const AC::HostServices& host, Options options)
        : mTroubles(options.onTrouble),
          mTakesNotes(!options.masksContents),
          mJournal(options.bufferBytes, mTroubles),
          mMemory(host.memory),
          mStations(host.stations, mHook, mTroubles),
          mPanelEvents(host.panelEvents, mHook, mStations),
          mIngestLibrary(host.ingestLibrary, mHook),
          mFiles(host.files, mHook),
          mTexts(host.texts, mHook),
          mWriter(options, mTroubles),
          mThread([this] { Run(); })
    {
    }

    ~Implementation()
    {
        mJournal.Stop();
        mThread.join();
        mWriter.Finish();
    }

    AC::HostServices Services() { return {mPanelEvents, mStations, mIngestLibrary, mFiles, mTexts, mMemory}; }

    Notifier Create(Kind kind, ALD::IAssetLibraryDispatcher* dispatcher)
    {
        const auto make = Session::kConnectorKinds[kind].create;
        if (!mStations.BeginConnector(kind)) {
            mTroubles.Tell("connector", "a second ", Session::kConnectorKinds[kind].title,
                           " is not recorded");
            return make(dispatcher);
        }
        const Journal::InputPtr input = mJournal.Begin([kind](Session::JsonText& out) {
            out.Name("create");
            out.String(Session::kConnectorKinds[kind].name);
        });
        if (input == nullptr) {  // a replay would not know of the connector
            mStations.EndConnector(kind, false);
            return make(dispatcher);
        }
        Notifier connector;
        try {
            connector = make(Wrap(kind, dispatcher));
        } catch (...) {
            mStations.EndConnector(kind, false);
            SetHasDispatcher(input, kind, dispatcher);
            mJournal.EndByException(input);
            throw;
        }
        if (KindOfRecorded(connector) != kind) {
            mTroubles.Tell("services", "nothing is recorded: Recorder::Services() is not what is installed");
            mStations.EndConnector(kind, false);
            input->type = Input::Type::kOutside;
            mJournal.End(input);
            return connector;
        }
        mStations.EndConnector(kind, true);
        SetHasDispatcher(input, kind, dispatcher);
        input->change.created = kind;
        mJournal.End(input);
        return Proxy(kind, connector);
    }

    Notifier Wrapped(const Notifier& connector)
    {
        if (!connector || dynamic_cast<const ConnectorProxy*>(connector.Get()) != nullptr)
            return connector;
        const Kind kind = KindOfRecorded(connector);
        return kind == kKindCount ? connector : Proxy(kind, connector);
    }

    void RegisterAssetMediaInfoToSRCore(const AC::ACMessage& message, bool firstFlag, bool secondFlag)
    {
        const Journal::InputPtr input = mJournal.Begin([&](Session::JsonText& out) {
            out.Name("call");
            out.String(std::string_view("ACUtils::RegisterAssetMediaInfoToSRCore"));
            out.Name("args");
            mJournal.Writer().Values().WriteArguments(out, message, firstFlag, secondFlag);
        });
        try {
            AC::ACUtils::RegisterAssetMediaInfoToSRCore(message, firstFlag, secondFlag);
        } catch (...) {
            mJournal.EndByException(input);
            throw;
        }
        mJournal.End(input);
    }

    void Note(const std::string& text)
    {
        if (mTakesNotes)
            mJournal.Note(text);
    }

    void Flush()
    {
        if (std::this_thread::get_id() !=
            mThread.get_id())  // told of trouble there, it would wait for itself
            mJournal.Flush();
    }

    std::filesystem::path CurrentFile() const { return mWriter.CurrentFile(); }

private:
    /// \param connector Not null. \return Its kind; kKindCount for one that is not recorded.
    Kind KindOfRecorded(const Notifier& connector)
    {
        const auto* const listener = dynamic_cast<const Kiln::Listener*>(connector->GetRawPointer());
        return listener == nullptr ? kKindCount : mStations.KindOfRecorded(*listener);
    }

    /// \return The connector itself when there is no memory for a proxy.
    Notifier Proxy(Kind kind, const Notifier& connector)
    {
        try {
            return ConnectorProxy::Make(
                connector, CallbackHook(mJournal, kind),
                [this, kind](const Notifier& real, ALD::IAssetLibraryDispatcher* dispatcher) {
                    SetDispatcher(kind, real, dispatcher);
                });
        } catch (const std::bad_alloc&) {
            TellOfMemory();
            return connector;
        }
    }

    void TellOfMemory()
    {
        mTroubles.Tell("memory", "the recorder has no memory: what happens is not recorded");
    }

    void SetDispatcher(Kind kind, const Notifier& connector, ALD::IAssetLibraryDispatcher* dispatcher)
    {
        ALD::IAssetLibraryDispatcher* const wrapped = Wrap(kind, dispatcher);
        AC::Query<AC::IAssetConnectorPrivate>(connector)->SetDispatcher(wrapped);
        Change change;
        change.hasDispatcher.emplace(kind, dispatcher != nullptr);
        mJournal.AddChange(change);
    }

    static void SetHasDispatcher(const Journal::InputPtr& input, Kind kind,
                                 const ALD::IAssetLibraryDispatcher* dispatcher)
    {
        if (input != nullptr)
            input->change.hasDispatcher.emplace(kind, dispatcher != nullptr);
    }

    /// \return The dispatcher behind a hook, which stays as long as this object, as a request may still use
    /// it; the dispatcher itself when there is no memory.
    ALD::IAssetLibraryDispatcher* Wrap(Kind kind, ALD::IAssetLibraryDispatcher* dispatcher)
    {
        if (dispatcher == nullptr)
            return nullptr;
        try {
            const std::lock_guard<std::mutex> lock(mDispatchersMutex);
            for (WrappedDispatcher& each : mDispatchers)
                if (each.Wraps(kind, dispatcher))
                    return each.Get();
            return mDispatchers.emplace_back(mHook, kind, *dispatcher).Get();
        } catch (const std::bad_alloc&) {
            TellOfMemory();
            return dispatcher;
        }
    }

    void Run() noexcept
    {
        bool isStopped = false;
        while (!isStopped) {
            isStopped = mJournal.IsStopped();
            try {
                Input missed;
                const auto inputs =
                    mJournal.Take(isStopped ? std::chrono::milliseconds(0) : kBetweenWrites, missed);
                mWriter.Miss(missed);
                mWriter.Write(inputs);
            } catch (const std::bad_alloc&) {
                TellOfMemory();  // and the next time is another attempt
            }
            mJournal.Written();
        }
    }

    Troubles mTroubles;
    const bool mTakesNotes;
    Journal mJournal;
    Hook mHook{mJournal};
    Kiln::IMemory& mMemory;
    Stations mStations;
    PanelEvents mPanelEvents;
    ReferenceHost::ForwardingIngestLibrary<Hook> mIngestLibrary;
    ReferenceHost::ForwardingFiles<Hook> mFiles;
    ReferenceHost::ForwardingTexts<Hook> mTexts;
    std::mutex mDispatchersMutex;
    std::list<WrappedDispatcher> mDispatchers;
    SessionWriter mWriter;
    std::thread mThread;  // last: it uses the rest
};

Recorder::Recorder(const AC::HostServices& host, Options options)
    : mHost(host),
      mImplementation(options.folder.empty() && options.sink.empty()
                          ? nullptr
                          : std::make_unique<Implementation>(host, std::move(options)))
{
}

Recorder::~Recorder() = default;

AC::HostServices Recorder::Services() const
{
    return mImplementation == nullptr ? mHost : mImplementation->Services();
}

Recorder::Notifier Recorder::CreateIngestGlintLibraryConnector(ALD::IAssetLibraryDispatcher* dispatcher)
{
    return Create("library", dispatcher);
}

Recorder::Notifier Recorder::CreateIngestMediaCollectionConnector(ALD::IAssetLibraryDispatcher* dispatcher)
{
    return Create("mediaCollection", dispatcher);
}

Recorder::Notifier Recorder::Create(std::string_view name, ALD::IAssetLibraryDispatcher* dispatcher)
{
    Kind kind = 0;
    while (Session::kConnectorKinds[kind].name != name)
        ++kind;
    return mImplementation == nullptr ? Session::kConnectorKinds[kind].create(dispatcher)
                                      : mImplementation->Create(kind, dispatcher);
}

Recorder::Notifier Recorder::Wrapped(const Notifier& connector) const
{
    return mImplementation == nullptr ? connector : mImplementation->Wrapped(connector);
}

void Recorder::RegisterAssetMediaInfoToSRCore(const AC::ACMessage& message, bool firstFlag, bool secondFlag)
{
    if (mImplementation == nullptr)
        AC::ACUtils::RegisterAssetMediaInfoToSRCore(message, firstFlag, secondFlag);
    else
        mImplementation->RegisterAssetMediaInfoToSRCore(message, firstFlag, secondFlag);
}

void Recorder::Note(const std::string& text)
{
    if (mImplementation != nullptr)
        mImplementation->Note(text);
}

void Recorder::Flush()
{
    if (mImplementation != nullptr)
        mImplementation->Flush();
}

std::filesystem::path Recorder::CurrentFile() const
{
    return mImplementation == nullptr ? std::filesystem::path() : mImplementation->CurrentFile();
}

}  // namespace Recording
