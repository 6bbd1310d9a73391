#pragma once

#include "assetconnector/connectors/IAssetConnectorPrivate.h"
#include "recorder/ForwardingNotifier.h"
#include "recorder/Hook.h"

#include <boost/function.hpp>

#include <atomic>

namespace Recording {

/// What callbacks go through: each is an input.
class CallbackHook
{
public:
    CallbackHook(Journal& journal, Kind kind) : mJournal(journal), mKind(kind) {}

    template <class Next, class... Arguments>
    void Around(const char* callback, const Next& next, const Arguments&... arguments)
    {
        Journal& journal = mJournal;  // the host may drop its last reference inside the callback
        const Journal::InputPtr input = journal.Begin([&](Session::JsonText& out) {
            out.Name("callback");
            out.String(std::string_view(callback));
            out.Name("to");
            out.String(Session::kConnectorKinds[mKind].name);
            out.Name("args");
            journal.Writer().Values().WriteArguments(out, arguments...);
        });
        if (input != nullptr)
            input->showsReading = ShowsReading(callback);
        try {
            next();
        } catch (...) {
            journal.EndByException(input);
            throw;
        }
        journal.End(input);
    }

private:
    bool ShowsReading(std::string_view callback) const
    {
        return Session::kConnectorKinds[mKind].name == "library" &&
               (callback == "OnImportXMPFinished" || callback == "OnReadXMPFinished");
    }

    Journal& mJournal;
    const Kind mKind;
};

/// The connector as the host holds it: callbacks are recorded, dispatchers wrapped. Counted, any thread;
/// keeps the connector as long as it is held.
class ConnectorProxy final : public ForwardingNotifier<CallbackHook>, public AC::IAssetConnectorPrivate
{
public:
    using Notifier = Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>;
    using SetDispatcherOf =
        boost::function<void(const Notifier& connector, ALD::IAssetLibraryDispatcher* dispatcher)>;

    /// \param setDispatcher Sets a dispatcher of the host, wrapped.
    static Notifier Make(const Notifier& connector, CallbackHook hook, SetDispatcherOf setDispatcher);

    void AddRef() override { mCount.fetch_add(1, std::memory_order_relaxed); }
    void Release() override;
    std::int32_t QueryInterface(const Guid& interfaceID, void*& out) override;
    /// \return The connector's, by which the library knows its own.
    KilnUnknown* GetRawPointer() override { return GetNext()->GetRawPointer(); }

    void SetDispatcher(ALD::IAssetLibraryDispatcher* dispatcher) override
    {
        mSetDispatcher(GetNext(), dispatcher);
    }

private:
    ConnectorProxy(const Notifier& connector, CallbackHook hook, SetDispatcherOf setDispatcher);

    const SetDispatcherOf mSetDispatcher;
    std::atomic<std::int32_t> mCount{0};
};

}  // namespace Recording
