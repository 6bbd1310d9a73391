#include "desk/RunningDesk.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <utility>

namespace Desk {

RunningDesk::RunningDesk(const DeskOptions& options, const MakeHost& makeHost)
    : mProblem(options.problem),
      mRecordName(options.record.u8string()),
      mHasAuthor(!options.author.empty()),
      mTraffic(options.traffic, [this] { Changed(); }),
      mWorker(options.problem, [] {}),
      mThread(options.problem, [this] { DeliverPosted(); })
{
    Site site(options.pages, options.author);
    if (!options.record.empty())
        mRecord.emplace(options.record);
    try {
        mThread.Run([this, &options, &makeHost] { BeginHost(options, makeHost); });
        Connections& connections = *this;
        mServer.emplace(connections, std::move(site), options.port, options.server);
    } catch (...) {
        EndHost();
        throw;
    }
}

void RunningDesk::BeginHost(const DeskOptions& options, const MakeHost& makeHost)
{
    Recording::Options recording;
    recording.sink = [this](const std::string& lines) { TakeRecording(lines); };
    recording.onTrouble = options.problem;
    mHost = makeHost({mThread, recording, mAnswers, [this] { Changed(); }});
    const auto check = [this, check = options.check](const std::string& session,
                                                     const boost::function<void(const std::string&)>& told) {
        constexpr int kMostChecks = 8;
        if (mChecks >= kMostChecks)
            return told("too many selections are being played; save it again later");
        ++mChecks;
        mWorker.Post([this, check, session, told] {
            const std::string why = mIsEnding ? "the desk ends" : check(session);
            --mChecks;
            told(why);
        });
    };
    const auto disturb = [this](const std::string& browserID, const Faults::Settings& settings) {
        return mBridge->Disturb(browserID, settings);
    };
    mTools.emplace(
        Tools::Needs{*mHost, mThread, mTraffic, disturb, [this] { Changed(); }, options.end, check});
    mBridge = boost::make_shared<Bridge>(
        *mHost, mThread, *mTools, [this] { return State(); }, options.bridge);
    mHost->Attach(mBridge);
}

RunningDesk::~RunningDesk()
{
    mIsEnding = true;
    mServer->Stop();
    EndHost();
}

void RunningDesk::Post(boost::function<void(Host& host)> task)
{
    mThread.Post([this, task = std::move(task)] { task(*mHost); });
}

void RunningDesk::Run(const boost::function<void(Host& host)>& task)
{
    mThread.Run([this, &task] { task(*mHost); });
}

void RunningDesk::OnText(const LinkRef& link, std::string text)
{
    Post([this, link, text = std::move(text)](Host&) { mBridge->OnText(link, text); });
}

void RunningDesk::OnGone(const LinkRef& link, bool isForGood)
{
    Post([this, link, isForGood](Host&) { mBridge->OnGone(link, isForGood); });
}

void RunningDesk::DeliverPosted()
{
    if (mHost && mHost->DeliverPosted())
        mThread.Post([] {});  // what was posted meanwhile has its turn behind what waits
}

void RunningDesk::OnReport(const std::string& report)
{
    Post([report](Host& host) { host.Mark("note", report); });
}

void RunningDesk::TakeRecording(const std::string& lines)
{
    mTraffic.Take(lines);
    if (mRecord)
        mRecord->Write(lines, mProblem);
}

void RunningDesk::Changed()
{
    constexpr std::chrono::milliseconds kSoon{100};
    if (!mIsStateDue.exchange(true))
        mThread.PostAfter(kSoon, [this] {
            mIsStateDue = false;
            if (mBridge)
                mBridge->SendState();
        });
}

Session::Json RunningDesk::State()
{
    Session::Json state = mTraffic.WithOverview([](const Overview& overview) { return overview.State(); });
    state.update(mHost->State());
    state["exit"] = mTools->ExitState();
    state["record"] = mRecord ? Session::Json(mRecordName) : Session::Json();
    state["author"] = mHasAuthor;
    return state;
}

void RunningDesk::EndHost()
{
    mThread.Run([this] {
        mBridge.reset();
        mTools.reset();
        mHost.reset();
        mThread.DropLater();
    });
}

}  // namespace Desk
