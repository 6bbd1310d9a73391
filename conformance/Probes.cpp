#include "conformance/Probes.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/TandemEvents.h"

#include <algorithm>
#include <future>
#include <random>

namespace Conformance {
namespace {

std::string TextOf(const Kiln::Message& message)
{
    if (message.MessageTypeID() == Probe::TypeID())
        return static_cast<const Probe&>(message).Text();
    if (message.MessageTypeID() == Ridge::TandemEvent::TypeID())
        return ferrite::utility::UTF16to8(static_cast<const Ridge::TandemEvent&>(message).GetData());
    return "message " + std::to_string(message.MessageTypeID());
}

}  // namespace

bool Log::Has(const std::string& text) const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return std::find(mTexts.begin(), mTexts.end(), text) != mTexts.end();
}

Log::Texts Sorted(Log::Texts texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

void Receiver::Listen(const ferrite::utility::ImmutableString& station)
{
    Kiln::StationUtils::AddListener(station, this);
}

void Receiver::OnStationMessage(const Kiln::Message& message)
{
    mHandler(TextOf(message));
}

Receiver::Handler LoggedAs(const std::string& name, Log& log)
{
    return [name, &log](const std::string& text) { log.Add(name + text); };
}

Receiver::Handler LoggedAndThrownAt(const std::string& bad, Log& log)
{
    return [bad, &log](const std::string& text) {
        log.Add(text);
        if (text == bad)
            throw Thrown();
    };
}

std::uint64_t RandomNumber()
{
    std::random_device random;
    return std::uint64_t{random()} << 32U | random();
}

std::string UniqueName()
{
    static const std::string process = std::to_string(RandomNumber()) + '-';
    static std::atomic<int> count{0};
    return "asset-connector-conformance-" + process + std::to_string(++count);
}

ferrite::utility::ImmutableString UniqueStation()
{
    return ferrite::utility::ImmutableString(UniqueName());
}

void Broadcast(const ferrite::utility::ImmutableString& station, const std::string& text)
{
    Kiln::StationUtils::BroadcastMessage(station, Probe(text));
}

void Post(const ferrite::utility::ImmutableString& station, const std::string& text, bool flag)
{
    Kiln::StationUtils::PostMessageToUIThread(station, Probe(text), flag);
}

void ExpectLog(Context& context, const std::string& what, const Log& log, const std::string& last,
               const Log::Texts& expected)
{
    context.WaitUntil([&log, &last] { return log.Has(last); });
    context.ExpectEqual(what, expected, log.Entries());
}

void OnTwoThreads(const boost::function<void()>& work)
{
    std::future<void> first = std::async(std::launch::async, [&work] { work(); });
    std::future<void> second = std::async(std::launch::async, [&work] { work(); });
    first.get();
    second.get();
}

const std::vector<UTF16String>& OddPaths()
{
    static const std::vector<UTF16String> paths{
        u"",
        u"a.mov",
        u"media/a",
        u".",
        u"..",
        u"../a.mov",
        u"/media/./b/..//a.mov",
        u"D:\\media\\a.mov",
        u"D:/media\\a.mov",
        u"D:a.mov",
        u"D:",
        u"\\\\asset-connector.invalid\\share\\a.mov",
        u"//asset-connector.invalid/share/a.mov",
        u"\\\\?\\D:\\media\\a.mov",
        u"\\\\?\\UNC\\asset-connector.invalid\\share\\a.mov",
        u"/media/\u00E4 \u20AC \U0001F600.mov",
        u"/media/a%20b&c;d'\".mov",
        u"/media/" + UTF16String(1, u'\xD800') + u".mov",
        u"/media/" + UTF16String(5000, u'x') + u".mov",
        u"file:///media/a.mov",
    };
    return paths;
}

}  // namespace Conformance
