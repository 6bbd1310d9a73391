#pragma once

#include "reference_host/ForwardingDispatcher.h"
#include "session/Recorder.h"
#include "session/format/ConnectorKinds.h"

#include <array>
#include <cstddef>
#include <iterator>
#include <set>

namespace Session {

/// The connectors of a session, at most one of each kind. One thread.
class Connectors
{
public:
    using Notifier = Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>;

    /// Makes a connector of a kind.
    using Factory = boost::function<Notifier(std::size_t which, ALD::IAssetLibraryDispatcher* dispatcher)>;

    /// \param recorder Of what they do; outlives this object. \param factory Empty: the library's.
    explicit Connectors(Recorder& recorder, Factory factory = {})
        : mRecorder(recorder), mFactory(std::move(factory))
    {
    }

    /// \param which The place in kConnectorKinds.
    const Notifier& operator[](std::size_t which) const { return mAlive[which]; }

    void Create(std::size_t which);
    void Release(std::size_t which);

    /// \param kinds From now on these have no dispatcher, and no others, those that live included.
    void SetWithoutDispatcher(const std::set<std::size_t>& kinds);

    /// Lets the library connector behave as if its last request about XMP had been to read from disk, or to
    /// import, without an effect. \throws FormatError when there is no such connector.
    void SetReadsFromDisk(bool fromDisk);

    /// \return The place in kConnectorKinds. \throws FormatError for an unknown name.
    static std::size_t Find(const std::string& name);

    /// \throws FormatError unless the connector lives or does not live, as asked for.
    void RequireAlive(std::size_t which, bool alive) const;

private:
    ALD::IAssetLibraryDispatcher* DispatcherOf(std::size_t which);

    Recorder& mRecorder;
    const Factory mFactory;
    Recorder::DispatcherHook mDispatcherHook{mRecorder};
    ReferenceHost::ForwardingDispatcher<Recorder::DispatcherHook> mDispatcher{mDispatcherHook};
    std::set<std::size_t> mWithoutDispatcher;
    std::array<Notifier, std::size(kConnectorKinds)> mAlive;
};

}  // namespace Session
