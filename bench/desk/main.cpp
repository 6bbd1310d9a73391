// How long it takes from a callback to the client that hears of it, and from what a client raises to the
// dispatcher, through the running desk. Prints JSON: rows with sorted microseconds. run.mjs makes the table.
//     desk_bench CLIENTS   raw clients over sockets, in this process
//     desk_bench page      prints the address first, and serves one page, which stamps with the wall clock

#include "assetconnector/host/XMLPlatform.h"
#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/LiveHost.h"
#include "desk/RunningDesk.h"
#include "tests/desk/Frames.h"
#include "tests/desk/RawClient.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iostream>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using Json = nlohmann::json;
using ferrite::utility::Guid;
using namespace std::chrono_literals;

constexpr int kRounds = 1000;
constexpr auto kBetween = 2ms;
constexpr const char* kMessage = "3e550001-0000-4000-8000-000000000001";

/// The wall clock, which a page has as well.
std::int64_t Now()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

/// Samples of several threads, in microseconds.
class Samples
{
public:
    void Add(std::int64_t nanoseconds)
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mValues.push_back(static_cast<double>(nanoseconds) / 1000);
    }
    std::size_t Count() const
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        return mValues.size();
    }
    Json Sorted() const
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        std::vector<double> values = mValues;
        std::sort(values.begin(), values.end());
        return values;
    }

private:
    mutable std::mutex mMutex;
    std::vector<double> mValues;
};

struct Measured
{
    Samples toClient, toLibrarysEnd;        ///< From the callback.
    Samples toDispatcher, fromPanelsEvent;  ///< From raise; from where the library begins.
};

/// A task whose id says when it was made.
std::string StampedTask()
{
    return ferrite::utility::UTF16to8(Guid(static_cast<std::uint64_t>(Now()), 1).AsString());
}

/// \param task Its text.
std::int64_t StampIn(std::string task)
{
    task.erase(std::remove(task.begin(), task.end(), '-'), task.end());
    return std::stoll(task.substr(0, 16), nullptr, 16);
}

/// Stamps when a request reaches the dispatcher.
class StampedWork final : public Desk::IdleWork
{
public:
    explicit StampedWork(Measured& measured) : mHook{measured, mRaised} {}

    ALD::IAssetLibraryDispatcher& DispatcherOf(Desk::PanelKind /*kind*/) override { return mDispatcher; }
    void Raising() { mRaised = Now(); }

private:
    struct Hook
    {
        template <class... Rest>
        void operator()(const char* /*operation*/, const Guid& task, const Rest&... /*rest*/) const
        {
            const std::int64_t now = Now();
            measured.toDispatcher.Add(now - StampIn(ferrite::utility::UTF16to8(task.AsString())));
            measured.fromPanelsEvent.Add(now - raised);
        }
        void operator()(const char* /*operation*/, const Ridge::ResultCode& /*code*/) const {}

        Measured& measured;
        const std::int64_t& raised;
    };

    std::int64_t mRaised = 0;
    Hook mHook;
    ReferenceHost::ForwardingDispatcher<Hook> mDispatcher{mHook};
};

/// The live host, stamped where the library begins and ends. It is the first to hear notifications.
class StampedHost final : public Desk::Host, private ReferenceHost::Panel
{
public:
    StampedHost(StampedWork& work, const Recording::Options& recording, Measured& measured)
        : mWork(work), mMeasured(measured), mHost(work, recording)
    {
        mHost.Attach(boost::shared_ptr<ReferenceHost::Panel>(boost::shared_ptr<void>(), this));
    }

    void Attach(boost::shared_ptr<ReferenceHost::Panel> panel) override { mHost.Attach(std::move(panel)); }
    const std::vector<std::string>& Handles() const override { return mHost.Handles(); }
    void Raise(const Desk::Origin& asker, const std::string& type, const std::string& xml) override
    {
        mWork.Raising();
        mHost.Raise(asker, type, xml);
    }
    bool DeliverPosted() override { return mHost.DeliverPosted(); }
    void Callback(const std::string& name, const Json& arguments, std::optional<Desk::PanelKind> to) override
    {
        mCalled = Now();
        mHost.Callback(name, arguments, to);
    }
    void Tell(const std::string& identifier, const std::string& xml) override { mHost.Tell(identifier, xml); }
    void Mark(const char* member, const std::string& mark) override { mHost.Mark(member, mark); }
    void FlushRecording() override { mHost.FlushRecording(); }
    Json State() const override { return mHost.State(); }

private:
    void OnNotification(const std::string& /*type*/, const std::string& /*data*/) override
    {
        mMeasured.toLibrarysEnd.Add(Now() - mCalled);
    }

    StampedWork& mWork;
    Measured& mMeasured;
    Desk::LiveHost mHost;
    std::int64_t mCalled = 0;
};

std::string Header(const Desk::Access& access, const std::string& fields)
{
    return " HTTP/1.1\r\nHost: " + access.Authority() + "\r\nOrigin: " + access.Origin() + "\r\n" + fields +
           "\r\n";
}

RawClient Connect(const Desk::RunningDesk& desk)
{
    const Desk::Access& access = desk.GetAccess();
    RawClient asks(desk.Port());
    asks.Send("POST /session" +
              Header(access, "Desk-Token: " + access.Token() + "\r\nContent-Length: 0\r\n"));
    const std::string cookie = asks.ReadAnswer().Field("Set-Cookie");
    RawClient client(desk.Port());
    client.Send("GET /socket" + Header(access, "Cookie: " + cookie.substr(0, cookie.find(';')) +
                                                   "\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
                                                   "Sec-WebSocket-Version: 13\r\n"
                                                   "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n"));
    client.ReadAnswer();
    client.Send(RawClient::MakeFrame(1, PageFrames::Hello("library")));
    return client;
}

/// Reads until it heard of so many callbacks.
void Hear(RawClient& client, Measured& measured)
{
    for (int heard = 0; heard < kRounds;) {
        const auto frame = client.ReadFrame();
        if (!frame)
            return;
        const std::int64_t now = Now();
        const std::size_t at = frame->payload.find("taskID ID=\\\"");
        if (frame->payload.find("\"notify\"") == std::string::npos || at == std::string::npos)
            continue;
        measured.toClient.Add(now - StampIn(frame->payload.substr(at + 12, 36)));
        ++heard;
    }
}

void MakeCallbacks(Desk::RunningDesk& desk)
{
    for (int i = 0; i < kRounds; ++i) {
        desk.Run([](Desk::Host& host) {
            host.Callback("OnTransferProgress", {StampedTask(), kMessage, 50}, Desk::PanelKind::kLibrary);
        });
        std::this_thread::sleep_for(kBetween);
    }
}

void RaiseRequests(std::vector<RawClient>& clients)
{
    std::uint64_t number = 0;
    for (int i = 0; i < kRounds; ++i) {
        RawClient& client = clients[static_cast<std::size_t>(i) % clients.size()];
        number = static_cast<std::uint64_t>(i) / clients.size() + 1;
        const std::string xml = "<browserMessage><taskID ID=\"" + StampedTask() +
                                "\"/><transferItemList><transferItem src=\"/media/a.mov\" dst=\"/backup\"/>"
                                "</transferItemList></browserMessage>";
        client.Send(RawClient::MakeFrame(1, PageFrames::Raise("TransferRequest", xml, number)));
        std::this_thread::sleep_for(kBetween);
    }
}

void RunClients(Desk::RunningDesk& desk, std::size_t count, Measured& measured)
{
    std::vector<RawClient> clients;
    for (std::size_t i = 0; i < count; ++i)
        clients.push_back(Connect(desk));
    std::vector<std::thread> threads;
    for (RawClient& client : clients)
        threads.emplace_back([&client, &measured] { Hear(client, measured); });
    std::this_thread::sleep_for(500ms);
    MakeCallbacks(desk);
    for (std::thread& thread : threads)
        thread.join();
    RaiseRequests(clients);
    desk.Run([](Desk::Host&) {});
}

void WaitFor(const boost::function<bool()>& holds)
{
    while (!holds())
        std::this_thread::sleep_for(10ms);
}

/// The page raises a request when it is there, and as many again when it has heard of all callbacks.
void RunPage(Desk::RunningDesk& desk, const Measured& measured)
{
    std::cout << Json{{"address", desk.GetAccess().Address()}} << std::endl;
    WaitFor([&measured] { return measured.toDispatcher.Count() > 0; });
    MakeCallbacks(desk);
    WaitFor([&measured] { return measured.toDispatcher.Count() > kRounds; });
}

}  // namespace

int main(int count, char** arguments)
{
    const std::string what = count > 1 ? arguments[1] : "1";
    const AC::XMLPlatform platform;
    Measured measured;
    StampedWork work(measured);
    Desk::DeskOptions options;
    options.pages = DESK_PAGES;
    options.author = BENCH_PAGE;
    options.server.mostPages = 64;
    {
        Desk::RunningDesk desk(options, [&](const Desk::RunningDesk::HostNeeds& needs) {
            return std::make_unique<StampedHost>(work, needs.recording, measured);
        });
        what == "page" ? RunPage(desk, measured) : RunClients(desk, std::stoul(what), measured);
    }
    std::cout << Json{{"clients", what},
                      {"rounds", kRounds},
                      {"toClient", measured.toClient.Sorted()},
                      {"toLibrarysEnd", measured.toLibrarysEnd.Sorted()},
                      {"toDispatcher", measured.toDispatcher.Sorted()},
                      {"fromPanelsEvent", measured.fromPanelsEvent.Sorted()}}
              << std::endl;
    return 0;
}
