#pragma once

#include "desk/LiveHost.h"
#include "desk/Work.h"
#include "reference_host/ForwardingDispatcher.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Work that writes down what it is asked for, by which connector and by whom.
class WorkLog : public Desk::IdleWork
{
public:
    void Begin(Desk::LiveHost& host) override { mHost = &host; }

    ALD::IAssetLibraryDispatcher& DispatcherOf(Desk::PanelKind kind) override
    {
        return kind == Desk::PanelKind::kLibrary ? mLibrary : mMediaCollection;
    }

    std::vector<std::string> Handles() const override { return {"com.velmo.browser.event.OpenAsset"}; }

    std::optional<Desk::Origin> AskerOf(const std::string& message) const override
    {
        const auto found = askers.find(message);
        return found == askers.end() ? std::nullopt : std::optional(found->second);
    }

    void Handle(const Desk::Origin& asker, const std::string& type, const std::string& xml) override
    {
        mLines.push_back(type + " " + xml + " for " + asker.browserID);
    }

    /// Such as "library StartTransfer for panel-1".
    const std::vector<std::string>& Lines() const { return mLines; }
    void Clear() { mLines.clear(); }

    /// By message id.
    std::map<std::string, Desk::Origin> askers;

    /// What the next operation throws.
    bool throwsNext = false;

private:
    struct Hook
    {
        template <class... Arguments>
        void operator()(const char* operation, const Arguments&... /*arguments*/) const
        {
            const Desk::Origin* const asker = log.mHost->Asker();
            log.mLines.push_back(std::string(name) + " " + operation + " for " +
                                 (asker == nullptr ? "nobody" : asker->browserID));
            if (std::exchange(log.throwsNext, false))
                throw std::runtime_error("the work throws");
        }

        WorkLog& log;
        const char* name;
    };

    Desk::LiveHost* mHost = nullptr;
    std::vector<std::string> mLines;
    Hook mLibraryHook{*this, "library"};
    Hook mMediaCollectionHook{*this, "mediaCollection"};
    ReferenceHost::ForwardingDispatcher<Hook> mLibrary{mLibraryHook};
    ReferenceHost::ForwardingDispatcher<Hook> mMediaCollection{mMediaCollectionHook};
};
