#include "assetconnector/xml/MessageParser.h"
#include "tests/support/HostTest.h"

#include <xercesc/dom/DOM.hpp>

namespace {

/// What is left of a text, refused or not, says nothing about the next one.
TEST(MessageParser, BeginsEachTextAnew)
{
    std::string elements, attributes;
    for (std::size_t i = 0; i < AC::MessageParser::kMostNames / 2 + 1; ++i) {
        elements += "<e" + std::to_string(i) + "/>";
        attributes += "<a a" + std::to_string(i) + "=''/>";
    }
    const std::string deep = Repeated("<a>", AC::MessageParser::kDeepestElement / 2 + 1);
    const struct
    {
        std::string first, second;
    } kTexts[] = {
        {deep + "</b>", deep + Repeated("</a>", AC::MessageParser::kDeepestElement / 2 + 1)},
        {"<a>" + elements + "</a>", "<b>" + attributes + "</b>"},
        {"<b>" + attributes + "</b>", "<a>" + elements + "</a>"},
        {"<a>left over</b>", "<a/>"},
    };
    for (const auto& texts : kTexts) {
        AC::MessageParser parser;
        parser.Parse(U(texts.first));
        const auto* const document = parser.Parse(U(texts.second));
        ASSERT_NE(document, nullptr) << Narrow(parser.Error().reason);
        EXPECT_TRUE(parser.Error().reason.empty());
        EXPECT_EQ(document->getDocumentElement()->hasChildNodes(), texts.second != "<a/>");
    }
}

}  // namespace
