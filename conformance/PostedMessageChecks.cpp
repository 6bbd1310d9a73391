#include "assetconnector/host/kiln/StationUtils.h"
#include "conformance/CheckTables.h"
#include "conformance/Probes.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <future>
#include <set>
#include <thread>
#include <utility>

namespace Conformance {
namespace {

void RequireDelivery(const Context& context)
{
    Context::Require(context.GetSubject().waitForUserInterface, "waitForUserInterface");
}

/// Keeps the user-interface thread from delivering what is posted, until it is released: what a queue does
/// with several messages shows only when they wait in it.
class HeldDelivery
{
public:
    explicit HeldDelivery(const Context& context)
        : mStation(UniqueStation()),
          mHolder(mStation,
                  [this, limit = context.Limit()](const std::string& /*text*/) { mGate.WaitFor(limit); })
    {
        Post(mStation, "");
    }
    ~HeldDelivery() { Release(); }
    HeldDelivery(const HeldDelivery&) = delete;
    HeldDelivery& operator=(const HeldDelivery&) = delete;

    void Release() { mGate.Open(); }

private:
    Gate mGate;
    const ferrite::utility::ImmutableString mStation;
    const Receiver mHolder;
};

void Arrives(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    Log log;
    const Receiver listener(station, LoggedAs("", log));
    Post(station, "with the flag", true);
    Post(station, "without the flag", false);
    Post(station, "last");
    context.WaitUntil([&log] { return log.Entries().size() >= 3; });
    context.GetSubject().waitForUserInterface();  // one that arrives twice may come behind
    context.ExpectEqual("delivered of three posted messages, sorted",
                        Log::Texts{"last", "with the flag", "without the flag"}, Sorted(log.Entries()));
}

/// Takes down where a message is.
class AddressReceiver final : public Kiln::Listener
{
public:
    explicit AddressReceiver(const ferrite::utility::ImmutableString& station)
    {
        Kiln::StationUtils::AddListener(station, this);
    }
    ~AddressReceiver() override { EndSubscriptions(); }
    AddressReceiver(const AddressReceiver&) = delete;
    AddressReceiver& operator=(const AddressReceiver&) = delete;

    const Kiln::Message* Address() const { return mAddress; }

private:
    void OnStationMessage(const Kiln::Message& message) override { mAddress = &message; }

    std::atomic<const Kiln::Message*> mAddress{nullptr};
};

void Copies(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    const AddressReceiver listener(station);
    const auto copies = boost::make_shared<std::atomic<int>>(0);
    const Probe original("", copies);
    Kiln::StationUtils::PostMessageToUIThread(station, original, true);
    context.Expect(*copies > 0, "copies when PostMessageToUIThread returns", "at least 1", "0");
    const bool came = context.WaitUntil([&listener] { return listener.Address() != nullptr; });
    context.Expect(came && listener.Address() != &original, "what is delivered", "a copy",
                   came ? "the original" : "nothing");
}

void Later(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    Log log;
    const Receiver listener(station, [&](const std::string& text) {
        log.Add(text);
        if (text != "1")
            return;
        Post(station, "2");
        log.Add("posted");
    });
    Post(station, "1");
    ExpectLog(context, "delivered where a listener posts a message", log, "2", {"1", "posted", "2"});
}

void Order(Context& context)
{
    RequireDelivery(context);
    constexpr int kMessages = 40;
    const auto one = UniqueStation();
    const auto other = UniqueStation();
    Log log;
    const Receiver first(one, LoggedAs("", log));
    const Receiver second(other, LoggedAs("", log));
    HeldDelivery held(context);
    Log::Texts posted;
    for (int i = 0; i < kMessages; ++i) {
        posted.push_back(std::to_string(i));
        Post(i % 2 == 0 ? one : other, posted.back(), i % 3 != 0);
    }
    held.Release();
    ExpectLog(context, "posted to two stations, with and without the flag", log, posted.back(), posted);
}

/// Does the work on a thread that has ended when this returns. \throws What the work throws.
void OnEndedThread(const boost::function<void()>& work)
{
    std::packaged_task<void()> task([&work] { work(); });
    std::future<void> done = task.get_future();
    std::thread(std::move(task)).join();
    done.get();
}

/// \return A number that no thread had before, whereas ids of threads come again.
int NumberOfThread()
{
    static std::atomic<int> count{0};
    thread_local const int number = ++count;
    return number;
}

void OneThread(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    Log log;
    std::mutex mutex;
    std::set<int> threads;
    const Receiver listener(station, [&](const std::string& text) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            threads.insert(NumberOfThread());
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));  // else one of several does it all
        log.Add(text);
    });
    context.ExpectNoThrow("posting on another thread", [&station] {
        OnEndedThread([&station] {
            for (const char* text : {"1", "2", "3"})
                Post(station, text);
        });
    });
    for (const char* text : {"4", "5", "last"})
        Post(station, text);
    context.WaitUntil([&log] { return log.Has("last"); });
    const std::lock_guard<std::mutex> lock(mutex);
    context.ExpectEqual("threads that deliver posted messages", std::size_t{1}, threads.size());
}

void PosterGone(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    Log log;
    const Receiver listener(station, LoggedAs("", log));
    HeldDelivery held(context);
    const bool posted = context.ExpectNoThrow("posting on another thread", [&station] {
        OnEndedThread([&station] { Post(station, "from a thread that has ended"); });
    });
    held.Release();
    if (!posted)
        return;
    Post(station, "last");
    ExpectLog(context, "delivered when the poster's thread has ended", log, "last",
              {"from a thread that has ended", "last"});
}

void Memory(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    Log log;
    const Receiver listener(station, LoggedAs("", log));
    context.GetSubject().waitForUserInterface();
    const std::size_t before = context.LiveBlocks();
    for (const char* text : {"1", "2", "last"})
        Post(station, text);
    // Fewer, where a message of an earlier check was still to be destroyed.
    const bool freed = context.WaitUntil([&] { return log.Has("last") && context.LiveBlocks() <= before; });
    context.Expect(freed, "blocks of the allocator in use when posted messages are delivered",
                   "not more than " + std::to_string(before), std::to_string(context.LiveBlocks()));
}

void Nobody(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    Log log;
    const Receiver listener(station, LoggedAs("", log));
    Post(UniqueStation(), "nobody listens");
    Post(station, "last");
    ExpectLog(context, "delivered behind a message to a station without listeners", log, "last", {"last"});
}

void AfterException(Context& context)
{
    RequireDelivery(context);
    const auto station = UniqueStation();
    Log log;
    const Receiver listener(station, LoggedAndThrownAt("bad", log));
    HeldDelivery held(context);
    for (const char* text : {"bad", "1", "last"})
        Post(station, text);
    held.Release();
    ExpectLog(context, "delivered when the first of three messages makes a listener throw", log, "last",
              {"bad", "1", "last"});
}

}  // namespace

std::vector<Check> PostedMessageChecks()
{
    return {
        {"stations.post",
         "A posted message arrives once, with and without the flag.",
         "Components miss that assets were ingested, or act twice.",
         Arrives,
         {"stations.end-waits", "memory.distinct"}},
        {"stations.post-copy",
         "A message is copied before PostMessageToUIThread returns; the copy is delivered.",
         "The message is gone when it is read, or two threads wait for each other.",
         Copies,
         {"stations.end-waits", "memory.distinct"}},
        {"stations.post-later",
         "A message that a listener posts is delivered behind the delivery under way.",
         "A component is called while it is in the middle of an earlier message.",
         Later,
         {"stations.end-waits", "memory.threads"}},
        {"stations.post-order",
         "Posted messages are delivered in their order, whatever station and flag.",
         "Components see an ingest finish that has not begun.",
         Order,
         {"stations.post"}},
        {"stations.post-thread",
         "One thread delivers all posted messages.",
         "Components that know the user-interface thread alone are called on others.",
         OneThread,
         {"stations.broadcast", "stations.post-poster-gone"}},
        {"stations.post-poster-gone",
         "A posted message arrives when the thread that posted it has ended.",
         "What a short-lived background thread reports is lost.",
         PosterGone,
         {"stations.end-waits", "memory.threads"}},
        {"stations.post-memory",
         "A delivered message is destroyed, and its memory goes back to the allocator that gave it.",
         "Memory grows with every message.",
         Memory,
         {"stations.end-waits", "memory.distinct"}},
        {"stations.post-nobody",
         "A posted message to a station without listeners does no harm.",
         "Messages stay behind one that no component listens for.",
         Nobody,
         {"stations.nobody", "stations.end-waits", "memory.distinct"}},
        {"stations.post-after-exception",
         "Messages behind one that makes a listener throw are delivered.",
         "One component fails, and all others miss what was posted behind.",
         AfterException,
         {"stations.after-exception", "stations.end-waits", "memory.distinct"}},
    };
}

}  // namespace Conformance
