#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "desk/OwnAnswers.h"
#include "desk/Work.h"

#include <cstddef>
#include <deque>
#include <map>

namespace Desk {

/// Carries nothing out that needs media: it keeps who asked for what, so that the outcome can be told by
/// hand, and answers what the desk knows by itself.
class LiveWork final : public Work
{
public:
    /// \param answers Outlives the work.
    explicit LiveWork(const OwnAnswers& answers) : mAnswers(answers) {}

    void Begin(LiveHost& host) override { mHost = &host; }
    ALD::IAssetLibraryDispatcher& DispatcherOf(PanelKind /*kind*/) override { return mDispatcher; }
    std::vector<std::string> Handles() const override { return mAnswers.Handles(); }
    std::optional<Origin> AskerOf(const std::string& message) const override;
    void Handle(const Origin& asker, const std::string& type, const std::string& xml) override;

private:
    /// Notes who asked, by the message of each call; a later one with the same, such as a cancel, changes
    /// nothing.
    struct Hook
    {
        template <class... Rest>
        void operator()(const char* /*operation*/, const ferrite::utility::Guid& /*task*/,
                        const ferrite::utility::Guid& message, const Rest&... /*rest*/) const
        {
            work.Remember(message);
        }
        void operator()(const char* /*operation*/, const Ridge::ResultCode& /*code*/) const {}

        LiveWork& work;
    };

    void Remember(const ferrite::utility::Guid& message);

    static constexpr std::size_t kMostAskers = 4096;

    const OwnAnswers& mAnswers;
    LiveHost* mHost = nullptr;
    std::map<ferrite::utility::Guid, Origin> mAskers;  ///< By message id.
    std::deque<ferrite::utility::Guid> mOrder;         ///< Of the message ids.
    Hook mHook{*this};
    ReferenceHost::ForwardingDispatcher<Hook> mDispatcher{mHook};
};

}  // namespace Desk
