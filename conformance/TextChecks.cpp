#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/ferrite/ZString.h"
#include "assetconnector/host/spur/SDKErrors.h"
#include "conformance/CheckTables.h"
#include "conformance/Probes.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <set>

namespace Conformance {
namespace {

using ferrite::utility::Guid;
using ferrite::utility::UTF16to8;

/// \param name Of the key; one for each text.
UTF16String KeyOf(const UTF16String& name, const UTF16String& defaultText)
{
    return u"$$$/Conformance/NoSuchText/" + name + u"=" + defaultText;
}

UTF16String Localized(const UTF16String& name, const UTF16String& defaultText)
{
    return ferrite::config::Localizer::Get().Lookup(KeyOf(name, defaultText));
}

void Default(Context& context)
{
    const UTF16String plain = u"Copy failed.";
    context.ExpectEqual("a text without a translation", plain, Localized(u"Plain", plain));
    const UTF16String special = u"\u00C4 \u20AC \U0001F600 <&>";
    context.ExpectEqual("a text without a translation", special, Localized(u"Special", special));
}

void Replacements(Context& context)
{
    const UTF16String all = u"@9, @8, @7, @6, @5, @4, @3, @2, @1, @0";
    context.ExpectEqual("a text with places for replacements", all, Localized(u"Places", all));
    const ferrite::ZString filled(KeyOf(u"Places", all),
                                  {u"a", u"b", u"c", u"d", u"e", u"f", u"g", u"h", u"i", u"@0"});
    context.ExpectEqual("the same with its replacements", UTF16String(u"@0, i, h, g, f, e, d, c, b, a"),
                        filled.Text());
}

void Report(Context& context)
{
    const auto& setReport = context.GetSubject().setReport;
    Context::Require(setReport, "setReport");
    const auto log = boost::make_shared<Log>();  // shared with the host, which may be slow to end it
    const Finally ending([&setReport] { setReport({}); });
    setReport([log](const UTF16String& text, const UTF16String& detail) {
        log->Add(UTF16to8(text));
        log->Add(UTF16to8(detail));
    });
    Spur::SDKErrors::SetSDKInfoString(u"Copy to \u20AC failed", u"");
    context.WaitUntil([&log] { return log->Entries().size() >= 2; });
    context.ExpectEqual("text and detail of a report", Log::Texts{"Copy to \xE2\x82\xAC failed", ""},
                        log->Entries());
}

constexpr std::size_t kGuids = 1000;

void FreshGuids(Context& context)
{
    std::set<Guid> guids;
    for (std::size_t i = 0; i < kGuids; ++i)
        guids.insert(Guid::CreateUnique());
    context.ExpectEqual("different GUIDs among fresh ones", kGuids, guids.size());
    context.ExpectEqual("the zero GUID is among fresh ones", false, guids.count(Guid()) != 0);
}

void GuidsOfThreads(Context& context)
{
    std::mutex mutex;
    std::set<Guid> guids;
    context.ExpectNoThrow("fresh GUIDs on other threads", [&] {
        OnTwoThreads([&] {
            std::set<Guid> own;
            for (std::size_t i = 0; i < kGuids; ++i)
                own.insert(Guid::CreateUnique());
            const std::lock_guard<std::mutex> lock(mutex);
            guids.merge(own);
        });
    });
    context.ExpectEqual("different GUIDs among fresh ones of two threads", 2 * kGuids, guids.size());
}

void Threads(Context& context)
{
    constexpr int kRounds = 50;
    const UTF16String names[] = {u"First", u"Second"};
    std::atomic<std::size_t> threads{0};
    context.ExpectNoThrow("texts on other threads", [&] {
        OnTwoThreads([&] {
            const UTF16String& mine = names[threads++];
            const UTF16String text = mine + u" copy failed.";
            for (int i = 0; i < kRounds; ++i)
                context.ExpectEqual("a text that two threads at once ask for", text, Localized(mine, text));
        });
    });
}

}  // namespace

std::vector<Check> TextChecks()
{
    return {
        {"texts.default", "A key without a translation gives its default text.",
         "Users read keys, or nothing.", Default},
        {"texts.replacements", R"("@0" to "@9" in a text stay as they are.)",
         "Users do not read which file could not be copied.", Replacements},
        {"texts.report", "An error report reaches the user, with its text and without a detail.",
         "Users wait for files that were refused.", Report},
        {"texts.fresh-guids", "A fresh GUID is not zero and was never given before.",
         "Answers reach the wrong task; a media info takes the place of another.", FreshGuids},
        {"texts.guids-of-threads",
         "Fresh GUIDs of different threads differ.",
         "Answers reach the wrong task when two ingests run at once.",
         GuidsOfThreads,
         {"texts.fresh-guids"}},
        {"texts.threads", "Texts are localised on any thread, several at once.",
         "Requests that are handled on a background thread fail.", Threads},
    };
}

}  // namespace Conformance
