// What the worst texts cost: each limit of the parser, and what else a page may send.

#include "bench/Hostile.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/xml/MessageLimits.h"
#include "bench/Codec.h"
#include "bench/Work.h"
#include "tests/support/HostileNames.h"

#include <boost/make_shared.hpp>

namespace Bench {
namespace {

namespace MessageLimits = AC::MessageLimits;

constexpr std::size_t kUnits = 500000;

/// What names that differ at their ends have before it.
const std::string kLongBeginning(64, 'x');

/// \return The unit as often as the length allows.
std::string Filled(const std::string& head, const std::string& unit, const std::string& tail)
{
    std::string text = head;
    while (text.size() + unit.size() + tail.size() <= kUnits)
        text += unit;
    return text + tail;
}

std::string Repeated(const std::string& unit, std::size_t count)
{
    std::string text;
    while (count-- > 0)
        text += unit;
    return text;
}

std::string ElementWithAttributes(const std::vector<std::string>& names)
{
    return "<a" + AttributesOf(names) + "/>";
}

std::string Honest()
{
    const auto generate = WorkKinds().front().generate;
    return generate(kUnits * 100 / generate(100).size());
}

std::string Names()
{
    return Filled("<a>", ElementsOf(Numbered("n", MessageLimits::kMostNames - 1)), "</a>");
}

std::string Depth()
{
    const std::size_t levels = MessageLimits::kDeepestElement - 1;
    return Filled("<a>", Repeated("<a b=\"\">", levels) + Repeated("</a>", levels), "</a>");
}

/// More than one element may have, too many for the scanner.
std::string SurplusAttributes()
{
    return Filled("<a", " b='>'", "/>");
}

}  // namespace

const std::vector<HostileKind>& HostileKinds()
{
    static const std::vector<HostileKind> kinds{
        {"honest", Honest},
        {"attributesOfHash",
         [] {
             return Filled("<a>", ElementWithAttributes(NamesOfHash(MessageLimits::kMostAttributes)), "</a>");
         }},
        {"longAttributesOfHash",
         [] {
             return Filled("<a>",
                           ElementWithAttributes(NamesOfHash(MessageLimits::kMostAttributes, kLongBeginning)),
                           "</a>");
         }},
        {"namesOfHash",
         [] { return Filled("<a>", ElementsOf(NamesOfHash(MessageLimits::kMostNamesOfHash)), "</a>"); }},
        {"longNamesOfHash",
         [] {
             return Filled("<a>", ElementsOf(NamesOfHash(MessageLimits::kMostNamesOfHash, kLongBeginning)),
                           "</a>");
         }},
        {"names", Names},
        {"depth", Depth},
        {"surplusAttributes", SurplusAttributes},
        {"elements", [] { return Filled("<a>", "<a/>", "</a>"); }},
        {"elementsInText", [] { return Filled("<a>", "<a/>x", "</a>"); }},
        {"attributes", [] { return Filled("<a>", "<a b=\"\" c=\"\" d=\"\" e=\"\"/>", "</a>"); }},
        {"references", [] { return Filled("<a>", "&#9;", "</a>"); }},
        {"sections", [] { return Filled("<a>", "x<![CDATA[]]>", "</a>"); }},
        {"comments", [] { return Filled("<a>", "x<!---->", "</a>"); }},
        {"items", [] { return Filled("<a><assetItemList>", "<assetItem/>", "</assetItemList></a>"); }},
    };
    return kinds;
}

void MeasureHostile()
{
    for (const HostileKind& kind : HostileKinds()) {
        const bool isHonest = &kind == &HostileKinds().front();
        Measure(std::string("hostile/") + kind.name, 1, [&kind, isHonest] {
            const auto work = boost::make_shared<Work>();
            work->utf16 = ferrite::utility::UTF8to16(kind.generate());
            const Operation round = isHonest ? BareParse(*work) : Operation([&text = work->utf16] {
                AC::ACMessage record;
                benchmark::DoNotOptimize(AC::ACMessageDecoder::DecodeXMLString(text, record));
            });
            return Prepared{[work, round] { round(); }, work->utf16.size() * sizeof(char16_t)};
        });
    }
}

}  // namespace Bench
