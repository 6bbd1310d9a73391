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

/// What the scanner would let pass.
TEST(MessageParser, RefusesZerosAndHalfPairs)
{
    AC::MessageParser parser;
    for (const std::u16string_view zero : {std::u16string_view(u"<a/>\0", 5),
                                           {u"<a/>\0<", 6},
                                           {u"<a/>\0<b>", 8},
                                           {u"<a/> \0x", 7},
                                           {u"<a>\0</a>", 8}}) {
        EXPECT_EQ(parser.Parse(UTF16String(zero)), nullptr);
        EXPECT_EQ(parser.Error().reason, u"a zero character is not accepted");
    }
    const auto text = [](const UTF16String& value) { return u"<a b='" + value + u"'/>"; };
    for (char16_t lead = 0xD800, trail = 0xDC00; lead <= 0xDBFF; ++lead, ++trail) {
        EXPECT_EQ(parser.Parse(text({lead})), nullptr) << lead;
        EXPECT_EQ(parser.Parse(text({lead, lead})), nullptr) << lead;
        EXPECT_EQ(parser.Parse(text({trail})), nullptr) << trail;
        EXPECT_NE(parser.Parse(text({lead, trail})), nullptr) << lead;
    }
}

}  // namespace
