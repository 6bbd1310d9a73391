#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "desk/Host.h"
#include "desk/HostThread.h"
#include "desk/OwnAnswers.h"
#include "desk/play/Pace.h"
#include "desk/play/Pairs.h"
#include "desk/play/Script.h"
#include "recorder/Recorder.h"
#include "reference_host/Forwarders.h"
#include "reference_host/Texts.h"
#include "session/Player.h"

#include <boost/function.hpp>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace Desk {

/// What a session does when pages take the part of its panels: its lines are played through the library, each
/// in its time, and where a panel raises a request there, it waits until a page raises one of that type,
/// whose text is then played. What such a text has of its own, its GUIDs and its panel, stands for the
/// session's from then on. Other requests pass by and use up nothing that the session's lines need.
class PlayedHost final : public Host, private Playback
{
public:
    struct Options
    {
        Pace::Settings pace;
        Recording::Options recording;  ///< Of what passes.
        /// Called when State has changed; it must not throw, and nothing is called back from inside.
        boost::function<void()> changed = [] {};
        const OwnAnswers* answers = nullptr;  ///< Outlives the host; null: it answers nothing by itself.
    };

    /// Begins when a panel comes, which else would miss its first news. \param timer Outlives this object; of
    /// the thread on which it is used. \throws As AC::InstallHost.
    PlayedHost(Script script, Timer& timer, const Options& options);

    void Attach(boost::shared_ptr<ReferenceHost::Panel> panel) override;
    const std::vector<std::string>& Handles() const override { return mHandles; }
    void OnPanel() override;
    void Aside(const boost::function<void()>& action) override;
    void Raise(const Origin& asker, const std::string& type, const std::string& xml) override;

    /// While the session is played, its own lines say when that happens.
    bool DeliverPosted() override;

    /// Without \p to, to the connector of who asked, else to those that there are.
    void Callback(const std::string& name, const Session::Json& arguments,
                  std::optional<PanelKind> to) override;
    void Tell(const std::string& identifier, const std::string& xml) override;
    void Mark(const char* member, const std::string& mark) override;
    void FlushRecording() override { mSeat->recorder.Flush(); }
    Session::Json State() const override;
    Playback* GetPlayback() override { return this; }

private:
    /// The hook between recorder and simulated host: who asks, and where GUIDs come from.
    class Answers
    {
    public:
        explicit Answers(PlayedHost& host) : mHost(host) {}

        template <class Next, class... Arguments>
        auto Around(const char* /*operation*/, const Next& next, const Arguments&... /*arguments*/)
            -> decltype(next())
        {
            using Answer = decltype(next());
            if constexpr (std::is_same_v<Answer, std::string>)
                return mHost.BrowserID(next());
            else if constexpr (std::is_same_v<Answer, ferrite::utility::Guid>)
                return mHost.mIsPassing ? mHost.mFresh.CreateUniqueGuid() : next();
            else
                return next();
        }

    private:
        PlayedHost& mHost;
    };

    struct Seat
    {
        Seat(const AC::HostServices& next, Answers& answers, const Recording::Options& recording);

        ReferenceHost::ForwardingPanelEvents<Answers> panelEvents;
        ReferenceHost::ForwardingTexts<Answers> texts;
        Recording::Recorder recorder;
    };

    class PassingScope;
    class SpeakerScope;

    void Step() override;
    void RaiseIt() override;
    void SetPace(std::optional<double> speed, std::optional<bool> isStepping) override;

    Session::Player::Between Between(const Recording::Options& recording);

    /// \return What is played next; null at the end.
    const Turn* Next() const { return mNext < mScript.turns.size() ? &mScript.turns[mNext] : nullptr; }
    bool Awaits(const std::string& type) const;
    void PlayRaised(const Origin& asker, const std::string& type, const std::string& xml);
    void AwaitNext();

    /// \param asker The page whose request is played, and \param xml its text; null for the session's own.
    void PlayNext(const Origin* asker = nullptr, const std::string* xml = nullptr);
    void PlayInput(const Turn::Input& input, const Origin* asker, const std::string* xml);

    /// \return Who raised the request whose message the callback carries; null for others.
    const Origin* AskerOf(const std::string& callback, const Session::Json& arguments) const;
    std::string BrowserID(const std::string& ofFile) const;
    bool IsAlive(PanelKind kind) const;

    const Script mScript;
    const boost::function<void()> mChanged;
    const OwnAnswers* const mOwnAnswers;
    const std::vector<std::string> mHandles;
    Pairs mPairs;
    std::map<ferrite::utility::Guid, Origin> mAskers;  ///< By message.
    bool mHasBegun = false;
    std::size_t mNext = 0;
    std::string mProblem;
    const Origin* mSpeaker = nullptr;  ///< Whose request, or answer, is being played.
    bool mIsPassing = false;
    ReferenceHost::Texts mFresh;
    Answers mAnswers{*this};
    std::unique_ptr<Seat> mSeat;  ///< Made by the player.
    Session::Player mPlayer;
    Pace mPace;
};

}  // namespace Desk
