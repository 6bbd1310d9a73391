#include "desk/play/PlayedHost.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/Frames.h"
#include "desk/Marks.h"
#include "desk/play/Comparison.h"
#include "session/Operations.h"
#include "session/format/FormatError.h"
#include "session/format/Json.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <utility>

namespace Desk {
namespace {

using ferrite::utility::Guid;
using Session::Json;

constexpr std::chrono::microseconds kBetweenLines = std::chrono::milliseconds(300);
constexpr std::uint64_t kLongestDistance = std::uint64_t{24} * 3600 * 1000000;

/// What the session calls the message of an operation.
constexpr const char* kMessageLabel = "message";

/// \return How long after the turn the next one is due.
std::chrono::microseconds Distance(const Turn* turn, const Turn& next)
{
    if (turn == nullptr || next.title == "host")
        return {};
    if (!turn->us || !next.us)
        return kBetweenLines;
    const std::uint64_t distance = std::max(*turn->us, *next.us) - *turn->us;
    return std::chrono::microseconds(static_cast<std::int64_t>(std::min(distance, kLongestDistance)));
}

}  // namespace

/// What is played meanwhile uses up no answer, no GUID and no exception of the session.
class PlayedHost::PassingScope
{
public:
    explicit PassingScope(PlayedHost& host) : mHost(host), mBefore(host.mIsPassing) { Set(true); }
    ~PassingScope() { Set(mBefore); }
    PassingScope(const PassingScope&) = delete;
    PassingScope& operator=(const PassingScope&) = delete;

private:
    void Set(bool isPassing)
    {
        mHost.mIsPassing = isPassing;
        mHost.mPlayer.GetHost().GetRecorder().SetMuted(isPassing);
    }

    PlayedHost& mHost;
    const bool mBefore;
};

class PlayedHost::SpeakerScope
{
public:
    SpeakerScope(PlayedHost& host, const Origin* speaker) : mHost(host) { mHost.mSpeaker = speaker; }
    ~SpeakerScope() { mHost.mSpeaker = nullptr; }
    SpeakerScope(const SpeakerScope&) = delete;
    SpeakerScope& operator=(const SpeakerScope&) = delete;

private:
    PlayedHost& mHost;
};

PlayedHost::Seat::Seat(const AC::HostServices& next, Answers& answers, const Recording::Options& recording)
    : panelEvents(next.panelEvents, answers),
      texts(next.texts, answers),
      recorder({panelEvents, next.stations, next.ingestLibrary, next.files, texts, next.memory}, recording)
{
}

PlayedHost::PlayedHost(Script script, Timer& timer, const Options& options)
    : mScript(std::move(script)),
      mChanged(options.changed),
      mOwnAnswers(options.answers),
      mHandles(mOwnAnswers == nullptr ? std::vector<std::string>() : mOwnAnswers->Handles()),
      mPlayer(Session::Style::kSession, {}, Between(options.recording)),
      mPace(timer, options.pace, [this] { PlayNext(); })
{
}

void PlayedHost::OnPanel()
{
    if (std::exchange(mHasBegun, true))
        return;
    AwaitNext();
    mChanged();
}

void PlayedHost::Aside(const boost::function<void()>& action)
{
    const PassingScope passing(*this);
    action();
}

Session::Player::Between PlayedHost::Between(const Recording::Options& recording)
{
    return {[this, recording](const AC::HostServices& services) {
                mSeat = std::make_unique<Seat>(services, mAnswers, recording);
                return mSeat->recorder.Services();
            },
            [this](std::size_t which, ALD::IAssetLibraryDispatcher* dispatcher) {
                return which == IndexOf(PanelKind::kLibrary)
                           ? mSeat->recorder.CreateIngestGlintLibraryConnector(dispatcher)
                           : mSeat->recorder.CreateIngestMediaCollectionConnector(dispatcher);
            }};
}

void PlayedHost::Attach(boost::shared_ptr<ReferenceHost::Panel> panel)
{
    mPlayer.GetHost().GetPanelEvents().Attach(std::move(panel));
}

void PlayedHost::Raise(const Origin& asker, const std::string& type, const std::string& xml)
{
    const Marks::Raising raising(mSeat->recorder, asker, type, mHandles);
    PlayRaised(asker, type, xml);
    if (std::find(mHandles.begin(), mHandles.end(), type) == mHandles.end())
        return;
    const PassingScope passing(*this);
    mOwnAnswers->Answer(*this, asker, type, xml);
}

void PlayedHost::PlayRaised(const Origin& asker, const std::string& type, const std::string& xml)
{
    if (!Awaits(type)) {
        Mark("next", Marks::kNotInSession);
        const PassingScope passing(*this);
        const SpeakerScope speaking(*this, &asker);
        mPlayer.Play(mPlayer.Read({{"panel", type}, {"data", xml}}));
        return;
    }
    const std::string ofFile = Session::ParseJson(Next()->inputs.back().text).at("data").get<std::string>();
    Comparison comparison;
    {
        const PassingScope passing(*this);
        comparison = CompareRequests(mPairs, asker, ofFile, xml);
    }
    for (const std::string& mark : comparison.marks)
        Mark("next", mark);
    if (!comparison.messageID.IsZero())
        mAskers.try_emplace(comparison.messageID, asker);  // a cancel has the same message
    PlayNext(&asker, &xml);
}

bool PlayedHost::DeliverPosted()
{
    return Next() == nullptr && mPlayer.GetHost().GetStations().DeliverPosted() > 0;
}

void PlayedHost::Callback(const std::string& name, const Json& arguments, std::optional<PanelKind> to)
{
    const Origin* const asker = AskerOf(name, arguments);
    if (!to && asker != nullptr)
        to = asker->kind;
    if (!to && std::none_of(std::begin(kPanelKinds), std::end(kPanelKinds),
                            [this](PanelKind kind) { return IsAlive(kind); }))
        throw Session::FormatError("the session has no connector now");
    const PassingScope passing(*this);
    const SpeakerScope speaking(*this, asker);
    for (const PanelKind kind : kPanelKinds)
        if (to ? kind == *to : IsAlive(kind))
            mPlayer.Read({{"callback", name}, {"to", NameOf(kind)}, {"args", arguments}}).run();
}

void PlayedHost::Tell(const std::string& identifier, const std::string& xml)
{
    const PassingScope passing(*this);
    mSeat->recorder.Services().panelEvents.DispatchApplicationEvent(identifier, xml);
}

void PlayedHost::Mark(const char* member, const std::string& mark)
{
    Marks::Put(mSeat->recorder, member, mark);
}

Json PlayedHost::State() const
{
    const Turn* const next = Next();
    const Turn* const shown = next != nullptr || mNext == 0 ? next : &mScript.turns[mNext - 1];
    const auto textOrNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
    return {{"mode", "play"},
            {"play",
             {{"file", mScript.file},
              {"line", next != nullptr ? next->inputs.back().line : mScript.lines},
              {"lines", mScript.lines},
              {"waitsFor", next != nullptr && next->awaits ? Json(*next->awaits) : Json()},
              {"next", next != nullptr ? Json(next->title) : Json()},
              {"comment", shown != nullptr ? *shown->comment : ""},
              {"hasBegun", mHasBegun},
              {"isEnded", next == nullptr},
              {"isStepping", mPace.Get().isStepping},
              {"speed", mPace.Get().speed},
              {"problem", textOrNull(mProblem)}}}};
}

void PlayedHost::Step()
{
    if (Next() != nullptr && !Next()->awaits)
        PlayNext();
}

void PlayedHost::RaiseIt()
{
    if (Next() != nullptr && Next()->awaits)
        PlayNext();
}

void PlayedHost::SetPace(std::optional<double> speed, std::optional<bool> isStepping)
{
    mPace.Set(speed, isStepping);
    mChanged();
}

bool PlayedHost::Awaits(const std::string& type) const
{
    return Next() != nullptr && Next()->awaits == type;
}

void PlayedHost::AwaitNext()
{
    const Turn* const next = Next();
    if (!mHasBegun || next == nullptr || next->awaits)
        mPace.Rest();
    else
        mPace.Await(Distance(mNext == 0 ? nullptr : &mScript.turns[mNext - 1], *next));
}

void PlayedHost::PlayNext(const Origin* asker, const std::string* xml)
{
    const Turn& turn = mScript.turns[mNext++];
    for (const Turn::Input& input : turn.inputs) {
        try {
            PlayInput(input, asker, &input == &turn.inputs.back() ? xml : nullptr);
        } catch (const Session::FormatError& error) {
            mProblem = "line " + std::to_string(input.line) + ": " + error.what();
            mNext = mScript.turns.size();
            break;
        }
    }
    AwaitNext();
    mChanged();
}

void PlayedHost::PlayInput(const Turn::Input& input, const Origin* asker, const std::string* xml)
{
    Json json = Session::ParseJson(mPairs.WithLiveGuids(input.text));
    if (const auto data = json.find("data"); data != json.end())
        *data = xml != nullptr ? *xml : mPairs.WithLiveBrowserID(data->get<std::string>());
    if (const auto callback = json.find("callback"); callback != json.end())
        asker = AskerOf(callback->get<std::string>(), json.at("args"));
    const SpeakerScope speaking(*this, asker);
    mPlayer.Play(mPlayer.Read(json));
}

const Origin* PlayedHost::AskerOf(const std::string& callback, const Json& arguments) const
{
    const Session::CallbackOperation* const operation = Session::FindCallback(callback);
    if (operation == nullptr || !arguments.is_array())
        return nullptr;
    const auto& labels = operation->labels.texts;
    const auto place =
        static_cast<std::size_t>(std::find(labels.begin(), labels.end(), kMessageLabel) - labels.begin());
    if (place >= arguments.size() || !arguments[place].is_string())
        return nullptr;
    const auto found =
        mAskers.find(Guid::StringToGUID(ferrite::utility::UTF8to16(arguments[place].get<std::string>())));
    return found == mAskers.end() ? nullptr : &found->second;
}

std::string PlayedHost::BrowserID(const std::string& ofFile) const
{
    return mSpeaker != nullptr ? mSpeaker->browserID : mPairs.LiveBrowserID(ofFile);
}

bool PlayedHost::IsAlive(PanelKind kind) const
{
    return static_cast<bool>(mPlayer.GetConnectors()[IndexOf(kind)]);
}

}  // namespace Desk
