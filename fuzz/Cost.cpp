// A long text made of the input takes no more than its length allows. The input's lines are a head, a piece
// that is repeated, and a tail. In each repetition # stands for its number and $ for a name, all of which
// have one hash in the XML library's tables.

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/xml/MessageLimits.h"
#include "fuzz/FuzzHost.h"
#include "tests/support/HostileNames.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kUnits = 100000;

/// How much longer than the XML library's own parser takes for an honest text.
constexpr double kMostTimes = 20;
constexpr int kAttempts = 5;

std::string Filled(std::string_view piece, unsigned number)
{
    std::string text;
    for (const char unit : piece)
        if (unit == '#')
            text += std::to_string(number);
        else if (unit == '$')
            text += NameOfHash(number % AC::MessageLimits::kMostNamesOfHash);
        else
            text += unit;
    return text;
}

/// \return The line that the text begins with, which is taken from it.
std::string_view TakeLine(std::string_view& text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    return line;
}

UTF16String LongText(std::string_view input)
{
    std::string text(TakeLine(input));
    const std::string_view piece = TakeLine(input);
    for (unsigned number = 0; !piece.empty() && text.size() + input.size() < kUnits; ++number)
        text += Filled(piece, number);
    text += input;
    return ferrite::utility::UTF8to16(text);
}

/// \return Seconds of processor time, the least of several attempts.
template <class Action>
double Cost(Action action)
{
    double least = 0;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::clock_t begin = std::clock();
        action();
        const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
        least = attempt == 0 ? seconds : std::min(least, seconds);
    }
    return least;
}

double HonestCost()
{
    const UTF16String text = LongText(
        "<a><assetItemList>\n<assetItem order=\"#\"><filePath path=\"/media/#.mov\"/><assetID "
        "ID=\"00000000-0000-0001-0000-000000000002\"/><startTime>#</startTime><duration>250</"
        "duration><frameRate>f25</frameRate><name>Interview, take #</name><assetMetadata>&amp;"
        "lt;prop name=&amp;quot;a&amp;quot;&amp;gt;a value, and more of it&amp;lt;/prop&amp;gt;"
        "</assetMetadata></assetItem>\n</assetItemList></a>");
    return Cost([&text] {
        xercesc::XercesDOMParser parser;
        xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()),
                                          text.size() * sizeof(char16_t), "text");
        source.setEncoding(xercesc::XMLUni::fgXMLChEncodingString);
        parser.parse(source);
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzHost::Get();
    static const double honest = HonestCost();
    const UTF16String text = LongText({reinterpret_cast<const char*>(data), size});
    const double times = Cost([&text] {
                             AC::ACMessage message;
                             AC::ACMessageDecoder::DecodeXMLString(text, message);
                         }) /
                         honest;
    if (times > kMostTimes)
        std::fprintf(stderr, "takes %.0f times what an honest text takes\n", times);
    Require(times <= kMostTimes);
    return 0;
}
