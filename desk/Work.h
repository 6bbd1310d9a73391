#pragma once

#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "desk/Origin.h"
#include "reference_host/ForwardingDispatcher.h"

#include <optional>
#include <string>
#include <vector>

namespace Desk {

class LiveHost;

/// What a host does, behind its connectors and beside them. Everything runs on the host's thread.
class Work
{
public:
    virtual ~Work() = default;

    /// Called once, when the host stands. \param host Outlives what the work does with it.
    virtual void Begin(LiveHost& host) = 0;

    /// \return What carries out the requests that the connector of this kind forwards; the same each time,
    ///         and it outlives the host. Inside a call LiveHost::Asker tells whose request it is.
    virtual ALD::IAssetLibraryDispatcher& DispatcherOf(PanelKind kind) = 0;

    /// \return The identifiers of the requests that Handle answers; they are told to pages.
    virtual std::vector<std::string> Handles() const = 0;

    /// \param message The text of a message id.
    /// \return Who asked, where the request was taken over and is not forgotten.
    virtual std::optional<Origin> AskerOf(const std::string& message) const = 0;

    /// A request of Handles, after the connectors had it. \param xml Its text, UTF-8, not checked.
    virtual void Handle(const Origin& asker, const std::string& type, const std::string& xml) = 0;
};

/// Does nothing: connectors answer what they answer by themselves.
class IdleWork : public Work
{
public:
    void Begin(LiveHost& /*host*/) override {}
    ALD::IAssetLibraryDispatcher& DispatcherOf(PanelKind /*kind*/) override { return mDispatcher; }
    std::vector<std::string> Handles() const override { return {}; }
    std::optional<Origin> AskerOf(const std::string& /*message*/) const override { return std::nullopt; }
    void Handle(const Origin& /*asker*/, const std::string& /*type*/, const std::string& /*xml*/) override {}

private:
    ReferenceHost::IdleDispatcher mDispatcher;
};

}  // namespace Desk
