#include "conformance/CheckTables.h"
#include "conformance/Probes.h"

#include <array>
#include <future>
#include <memory>
#include <thread>

namespace Conformance {
namespace {

/// How long something is kept waiting that must wait.
constexpr std::chrono::milliseconds kPause(200);

void Broadcasts(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    const std::thread::id here = std::this_thread::get_id();
    bool elsewhere = false;
    const Receiver first(station, LoggedAs("first ", log));
    const Receiver second(station, [&](const std::string& text) {
        log.Add("second " + text);
        elsewhere = std::this_thread::get_id() != here;
    });
    Broadcast(station, "1");
    context.ExpectEqual("delivered when the broadcast returns", Log::Texts{"first 1", "second 1"},
                        log.Entries());
    context.Expect(!elsewhere, "thread of the delivery", "the one that broadcasts", "another one");
}

void Order(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    // In no order of addresses.
    std::array<Receiver, 4> listeners{Receiver(LoggedAs("0", log)), Receiver(LoggedAs("1", log)),
                                      Receiver(LoggedAs("2", log)), Receiver(LoggedAs("3", log))};
    for (const std::size_t i : std::array<std::size_t, 4>{2, 0, 3, 1})
        listeners[i].Listen(station);
    Broadcast(station, "");
    context.ExpectEqual("listeners that subscribed in the order 2, 0, 3, 1", Log::Texts{"2", "0", "3", "1"},
                        log.Entries());
}

void Other(Context& context)
{
    const auto one = UniqueStation();
    const auto other = UniqueStation();
    Log log;
    const Receiver first(one, LoggedAs("one ", log));
    const Receiver second(other, LoggedAs("other ", log));
    Broadcast(one, "1");
    Broadcast(other, "2");
    // A name with the same characters is the same station.
    Broadcast(ferrite::utility::ImmutableString(one.AsUTF8()), "3");
    context.ExpectEqual("delivered at two stations", Log::Texts{"one 1", "other 2", "one 3"}, log.Entries());
}

void Nobody(Context& context)
{
    const auto station = UniqueStation();
    context.ExpectNoThrow("a broadcast to a station without listeners",
                          [&station] { Broadcast(station, "1"); });
    Log log;
    const Receiver listener(station, LoggedAs("", log));
    Broadcast(station, "2");
    context.ExpectEqual("delivered to a listener that came later", Log::Texts{"2"}, log.Entries());
}

void Ends(Context& context)
{
    const auto one = UniqueStation();
    const auto other = UniqueStation();
    Log log;
    Receiver leaves(LoggedAs("gone ", log));
    const Receiver stays(one, LoggedAs("", log));
    leaves.Listen(one);
    leaves.Listen(other);
    leaves.EndSubscriptions();
    Broadcast(one, "1");
    Broadcast(other, "2");
    leaves.EndSubscriptions();
    Broadcast(one, "3");
    context.ExpectEqual("delivered after the subscriptions of one listener ended", Log::Texts{"1", "3"},
                        log.Entries());
}

/// Expects the end of a listener, from inside a delivery, to be done within the limit.
void EndQuickly(Context& context, Receiver& listener)
{
    const auto begin = std::chrono::steady_clock::now();
    listener.EndSubscriptions();
    context.Expect(std::chrono::steady_clock::now() - begin < context.Limit(),
                   "EndSubscriptions from inside a delivery", "no wait for that delivery", "a wait");
}

void EndsItself(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    Receiver once([&](const std::string& text) {
        log.Add("once " + text);
        EndQuickly(context, once);
    });
    once.Listen(station);
    const Receiver behind(station, LoggedAs("behind ", log));
    const Receiver last(station, LoggedAs("last ", log));
    Broadcast(station, "1");
    Broadcast(station, "2");
    context.ExpectEqual("delivered around a listener that ends itself",
                        Log::Texts{"once 1", "behind 1", "last 1", "behind 2", "last 2"}, log.Entries());
}

void EndsOther(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    Receiver ended(LoggedAs("ended ", log));
    const Receiver ending(station, [&](const std::string& text) {
        log.Add("ending " + text);
        EndQuickly(context, ended);
    });
    ended.Listen(station);
    const Receiver last(station, LoggedAs("last ", log));
    Broadcast(station, "1");
    context.ExpectEqual("delivered where one listener ends another one", Log::Texts{"ending 1", "last 1"},
                        log.Entries());
}

void EndWaits(Context& context)
{
    const auto station = UniqueStation();
    Gate entered;
    Gate leave;
    std::atomic<bool> left{false};
    Receiver listener(station, [&](const std::string& /*text*/) {
        entered.Open();
        leave.WaitFor(context.Limit());
        left = true;
    });
    const std::future<void> delivering =
        std::async(std::launch::async, [&station] { Broadcast(station, "1"); });
    const bool came = entered.WaitFor(context.Limit());
    const std::future<void> opening = std::async(std::launch::async, [&leave] {
        std::this_thread::sleep_for(kPause);
        leave.Open();
    });
    listener.EndSubscriptions();
    const bool waited = left;
    delivering.wait();  // the listener lives until then, whatever the host does
    if (context.ExpectEqual("a broadcast on another thread is delivered", true, came))
        context.ExpectEqual("the delivery on another thread is over when EndSubscriptions returns", true,
                            waited);
}

void AddsInside(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    Receiver added([&log](const std::string& text) {
        if (text != "1")  // whether the message under way reaches it is the host's
            log.Add("added " + text);
    });
    bool isAdded = false;
    const Receiver adding(station, [&](const std::string& text) {
        log.Add("adding " + text);
        if (!isAdded)
            added.Listen(station);
        isAdded = true;
    });
    Broadcast(station, "1");
    Broadcast(station, "2");
    context.ExpectEqual("delivered where a listener adds another one",
                        Log::Texts{"adding 1", "adding 2", "added 2"}, log.Entries());
}

void Nested(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    const Receiver outer(station, [&](const std::string& text) {
        log.Add("first " + text);
        if (text != "outer")
            return;
        Broadcast(station, "inner");
        log.Add("inner is done");
    });
    const Receiver second(station, LoggedAs("second ", log));
    Broadcast(station, "outer");
    context.ExpectEqual(
        "delivered when a listener broadcasts",
        Log::Texts{"first outer", "first inner", "second inner", "inner is done", "second outer"},
        log.Entries());
}

/// \return Whether the broadcast threw what listeners throw.
bool Throws(const ferrite::utility::ImmutableString& station, const std::string& text)
{
    try {
        Broadcast(station, text);
    } catch (const Thrown&) {
        return true;
    }
    return false;
}

void Exceptions(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    const Receiver first(station, LoggedAs("first ", log));
    const Receiver throwing(station, [](const std::string& /*text*/) { throw Thrown(); });
    const Receiver behind(station, LoggedAs("behind ", log));
    context.ExpectEqual("what a listener throws comes out of the broadcast", true, Throws(station, "1"));
    context.ExpectEqual("delivered when the second of three listeners throws", Log::Texts{"first 1"},
                        log.Entries());
}

void AfterException(Context& context)
{
    const auto station = UniqueStation();
    Log log;
    const Receiver listener(station, LoggedAndThrownAt("bad", log));
    Throws(station, "bad");
    Throws(station, "good");
    context.ExpectEqual("delivered when the first message makes a listener throw", Log::Texts{"bad", "good"},
                        log.Entries());
}

void Threads(Context& context)
{
    constexpr int kRounds = 50;
    std::atomic<int> delivered{0};
    std::atomic<int> shared{0};
    const auto common = UniqueStation();
    const Receiver here(common, [&shared](const std::string& /*text*/) { ++shared; });
    context.ExpectNoThrow("stations on other threads", [&delivered, &common] {
        const auto station = UniqueStation();
        OnTwoThreads([&delivered, &common, &station] {
            const auto own = UniqueStation();
            for (int i = 0; i < kRounds; ++i) {
                Receiver listener(own, [&delivered](const std::string& /*text*/) { ++delivered; });
                listener.Listen(station);
                Broadcast(own, "");
                Broadcast(common, "");
                listener.EndSubscriptions();
                Broadcast(own, "");
            }
        });
    });
    context.ExpectEqual("deliveries to listeners of two threads", 2 * kRounds, delivered.load());
    context.ExpectEqual("deliveries to a listener at whose station two threads broadcast", 2 * kRounds,
                        shared.load());
}

}  // namespace

std::vector<Check> StationChecks()
{
    return {
        {"stations.broadcast",
         "A broadcast reaches every listener of the station, on its own thread, before it returns.",
         "A request is answered too late or on a thread that its panel does not expect.", Broadcasts},
        {"stations.order", "Listeners get a message in the order of their subscription.",
         "Of two connectors now the one and now the other acts first.", Order},
        {"stations.other", "A message reaches the listeners of its own station alone; a station is its name.",
         "Components act on what was meant for others.", Other},
        {"stations.nobody", "A broadcast to a station without listeners does nothing.",
         "A callback fails because no component happens to listen.", Nobody},
        {"stations.ends", "After EndSubscriptions no message reaches the listener, at any of its stations.",
         "A connector that was dropped is called: the host crashes.", Ends},
        {"stations.end-itself",
         "A listener may end its subscriptions while it is called; those behind it still get the message.",
         "A connector that is dropped while it handles a request stops the host, or hides the request from "
         "others.",
         EndsItself},
        {"stations.end-other",
         "A listener that another one ends during a broadcast does not get that message any more.",
         "A connector is called right after a component dropped it: the host crashes.", EndsOther},
        {"stations.end-waits",
         "EndSubscriptions waits for a delivery that is under way on another thread.",
         "A connector is destroyed while another thread is inside it: the host crashes, rarely and anywhere.",
         EndWaits,
         {"stations.ends"}},
        {"stations.add-inside",
         "A listener may be added during a broadcast and gets what is broadcast later.",
         "A connector that is made in answer to a message stays deaf.", AddsInside},
        {"stations.nested", "A broadcast from inside a delivery is delivered before it returns, too.",
         "An event that is raised in answer to another one comes too late, or never.", Nested},
        {"stations.exception", "The first exception of a listener ends a broadcast and reaches its caller.",
         "What went wrong in a dispatcher stays unknown, and others act on a request that has failed.",
         Exceptions},
        {"stations.after-exception", "A station works on when a listener has thrown.",
         "One failed request, and no panel is heard any more.", AfterException},
        {"stations.threads",
         "Listeners are added and ended, and messages broadcast, on any thread, several at once.",
         "Connectors fail where a background thread makes, drops or calls them.", Threads},
    };
}

}  // namespace Conformance
