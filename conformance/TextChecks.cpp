#include "assetconnector/host/ferrite/ZString.h"
#include "assetconnector/host/spur/SDKErrors.h"
#include "conformance/CheckTables.h"
#include "conformance/Probes.h"

#include <set>

namespace Conformance {
namespace {

using ferrite::utility::Guid;

UTF16String Localized(const UTF16String& defaultText)
{
    return ferrite::config::Localizer::Get().Lookup(u"$$$/Conformance/NoSuchText=" + defaultText);
}

void Default(Context& context)
{
    for (const char16_t* const text : {u"Copy failed.", u"\u00C4 \u20AC \U0001F600 <&>"})
        context.ExpectEqual("a text without a translation", UTF16String(text), Localized(text));
}

void Replacements(Context& context)
{
    const UTF16String all = u"@9, @8, @7, @6, @5, @4, @3, @2, @1, @0";
    context.ExpectEqual("a text with places for replacements", all, Localized(all));
    const ferrite::ZString filled(u"$$$/Conformance/NoSuchText=" + all,
                                  {u"a", u"b", u"c", u"d", u"e", u"f", u"g", u"h", u"i", u"@0"});
    context.ExpectEqual("the same with its replacements", UTF16String(u"@0, i, h, g, f, e, d, c, b, a"),
                        filled.Text());
}

void Report(Context& context)
{
    const auto& setReport = context.GetSubject().setReport;
    Context::Require(setReport, "setReport");
    UTF16String text;
    UTF16String detail;
    {
        const Finally ending([&setReport] { setReport({}); });
        setReport([&](const UTF16String& inText, const UTF16String& inDetail) {
            text = inText;
            detail = inDetail;
        });
        Spur::SDKErrors::SetSDKInfoString(u"Copy to \u20AC failed", u"");
    }
    context.ExpectEqual("text of a report", UTF16String(u"Copy to \u20AC failed"), text);
    context.ExpectEqual("detail of a report", UTF16String(), detail);
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
    context.ExpectNoThrow("texts on other threads", [] {
        OnTwoThreads([] {
            for (int i = 0; i < kRounds; ++i)
                Localized(u"Copy failed.");
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
         "The same, where two ingests run at once.",
         GuidsOfThreads,
         {"texts.fresh-guids"}},
        {"texts.threads", "Texts are localised on any thread, several at once.",
         "Requests that are handled on a background thread fail.", Threads},
    };
}

}  // namespace Conformance
