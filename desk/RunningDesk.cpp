#include "desk/RunningDesk.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <utility>

namespace Desk {

RunningDesk::RunningDesk(const DeskOptions& options, const MakeHost& makeHost)
    : mThread(options.problem, [this] { DeliverPosted(); })
{
    Pages pages(options.pages);
    mThread.Run([this, &options, &makeHost] {
        mHost = makeHost(mThread);
        mBridge = boost::make_shared<Bridge>(*mHost, options.bridge);
        mHost->Attach(mBridge);
    });
    try {
        Connections& connections = *this;
        mServer.emplace(connections, std::move(pages), options.port, options.server);
    } catch (...) {
        EndHost();
        throw;
    }
}

RunningDesk::~RunningDesk()
{
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

void RunningDesk::EndHost()
{
    mThread.Run([this] {
        mBridge.reset();
        mHost.reset();
    });
}

}  // namespace Desk
