// What the worst texts cost: each limit of the parser, and what else a page may send.

#include "bench/Hostile.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/xml/MessageLimits.h"
#include "bench/Codec.h"
#include "bench/Work.h"

#include <boost/make_shared.hpp>

namespace Bench {
namespace {

namespace MessageLimits = AC::MessageLimits;

constexpr std::size_t kUnits = 500000;

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

/// \return Names with one hash in all of the XML library's tables, where "ag" and "bA" have the same, and one
///         beginning of so many units.
std::vector<std::string> NamesOfHash(std::size_t count, std::size_t prefix)
{
    std::vector<std::string> names;
    while (names.size() < count) {
        std::string& name = names.emplace_back(prefix, 'x');
        for (unsigned bit = 0; bit < 8; ++bit)
            name += ((names.size() - 1) >> bit & 1U) == 0 ? "ag" : "bA";
    }
    return names;
}

std::string ElementsOf(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
        text += "<" + name + "/>";
    return text;
}

std::string ElementWithAttributes(const std::vector<std::string>& names)
{
    std::string text = "<a";
    for (const std::string& name : names)
        text += " " + name + "=\"\"";
    return text + "/>";
}

std::string Honest()
{
    const auto generate = WorkKinds().front().generate;
    return generate(kUnits * 100 / generate(100).size());
}

std::string Names()
{
    std::string names;
    for (std::size_t i = 1; i < MessageLimits::kMostNames; ++i)
        names += "<n" + std::to_string(i) + "/>";
    return Filled("<a>", names, "</a>");
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
             return Filled("<a>", ElementWithAttributes(NamesOfHash(MessageLimits::kMostAttributes, 0)),
                           "</a>");
         }},
        {"longAttributesOfHash",
         [] {
             return Filled("<a>", ElementWithAttributes(NamesOfHash(MessageLimits::kMostAttributes, 64)),
                           "</a>");
         }},
        {"namesOfHash",
         [] { return Filled("<a>", ElementsOf(NamesOfHash(MessageLimits::kMostNamesOfHash, 0)), "</a>"); }},
        {"longNamesOfHash",
         [] { return Filled("<a>", ElementsOf(NamesOfHash(MessageLimits::kMostNamesOfHash, 64)), "</a>"); }},
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
