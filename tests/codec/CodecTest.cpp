#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/message/Comparison.h"
#include "tests/support/HostTest.h"
#include "tests/support/SmallStack.h"

#include <boost/make_shared.hpp>
#include <xercesc/dom/DOM.hpp>

#include <cstdlib>

namespace {

using AC::ACMessage;
using AC::ACMessageDecoder::DecodeXMLString;

using Decoder = HostTest;
using Encoder = HostTest;

TEST_F(Decoder, LeavesTheRecordOfATextThatDoesNotParse)
{
    for (const char* text :
         {"", "<a><filePath path=\"/x\"/><errorInfo>cut", "<a><result>x</result><!DOCTYPE a></a>"}) {
        ACMessage message;
        AC::ParseError error;
        EXPECT_FALSE(DecodeXMLString(U(text), message, error));
        EXPECT_FALSE(error.reason.empty());
        EXPECT_TRUE(AC::Comparison::Same(message, ACMessage()));
    }
}

/// A hundred million characters in one value.
TEST_F(Decoder, ReadsAHugeText)
{
#if defined(__SANITIZE_THREAD__)
    constexpr bool kIsAffordable = false;
#else
    constexpr bool kIsAffordable = true;
#endif
    if (std::getenv("ASSETCONNECTOR_LONG_TESTS") == nullptr || !kIsAffordable)
        GTEST_SKIP() << "takes seconds and a gigabyte";
    ACMessage message;
    message.result = UTF16String(100000000, u'x');
    UTF16String text = AC::ACMessageEncoder::EncoderACMessage(message, u"a");
    ACMessage copy;
    ASSERT_TRUE(DecodeXMLString(text, copy));
    EXPECT_TRUE(copy.result == message.result);
    text.pop_back();
    ACMessage untouched;
    EXPECT_FALSE(DecodeXMLString(text, untouched));
    EXPECT_TRUE(untouched.result.empty());
}

TEST_F(Decoder, ReadsTheValueOfTheFirstNodeWhole)
{
    const std::string many = Repeated("x&amp;", 100000);
    const std::string large = Repeated("y", 1000000);
    struct
    {
        std::string content;
        std::string value;
    } const rows[] = {
        {"a&lt;b&#x20AC;&#10;c", "a<b\xE2\x82\xAC\nc"},
        {"a<!-- no -->b<?no no?>c", "abc"},
        {"a<![CDATA[b]]>c", "a"},
        {"<![CDATA[<b>&amp;]]>c", "<b>&amp;"},
        {"<![CDATA[]]>c", ""},
        {"<b/>c", ""},
        {" <b/>", " "},
        {"a\r\nb\rc", "a\nb\nc"},
        {many, Repeated("x&", 100000)},
        {large + "<!-- -->" + large, large + large},
        {"<![CDATA[" + large + "]]>", large},
    };
    for (const auto& row : rows) {
        ACMessage message;
        ASSERT_TRUE(DecodeXMLString(U("<a><result>" + row.content + "</result></a>"), message));
        EXPECT_EQ(Narrow(message.result) == row.value, true) << row.content.substr(0, 40);
    }
}

TEST_F(Decoder, LooksUpInLongLists)
{
    std::string properties;
    for (int i = 0; i < 10000; ++i)
        properties += "<p" + std::to_string(i) + ">" + std::to_string(i) + "</p" + std::to_string(i) + ">";
    std::string attributes;
    for (int i = 0; i < 255; ++i)
        attributes += " a" + std::to_string(i) + "=\"" + std::to_string(i) + "\"";
    ACMessage message;
    ASSERT_TRUE(DecodeXMLString(U("<a>" + properties + "<host" + attributes +
                                  " ID=\"h\"/><customMetadata><minimumMetadata><namespace>" + properties +
                                  "<p0>again</p0></namespace></minimumMetadata></customMetadata><targetBin" +
                                  attributes + " ID=\"bin\"/></a>"),
                                message));
    const auto& read = message.customMetadata.minimumMetadata.namespaces.front()->properties;
    EXPECT_EQ(read.size(), 10000U);
    EXPECT_EQ(read.at(u"p0"), u"0");
    EXPECT_EQ(message.targetBin, u"bin");
}

TEST_F(Decoder, ReadsAndWritesDeepItemsOnASmallStack)
{
    OnSmallStack([] {
        ACMessage message;
        ASSERT_TRUE(DecodeXMLString(U("<a>" + DeepItems("<name>deep</name>") + "</a>"), message));
        ACMessage again;
        ASSERT_TRUE(DecodeXMLString(AC::ACMessageEncoder::EncoderACMessage(message, u"a"), again));
        const Ridge::AssetItemList* items = &again.assetItemList;
        UTF16String name;
        for (std::size_t depth = 0; depth < kDeepItems; ++depth) {
            ASSERT_EQ(items->size(), 1U);
            name = items->front()->GetAssetName();
            items = &items->front()->GetSubAssetItemList();
        }
        EXPECT_EQ(name, u"deep");
    });
}

TEST_F(Encoder, RefusesNamesThatAreNone)
{
    for (const UTF16String& name :
         {UTF16String(), UTF16String(u"1a"), UTF16String(u"a b"), UTF16String(u"a\0b", 3)}) {
        ACMessage message;
        EXPECT_THROW(AC::ACMessageEncoder::EncoderACMessage(message, name), xercesc::DOMException);
        auto metadata = boost::make_shared<Ridge::NamespaceMetadata>();
        metadata->properties[name] = u"value";
        message.customMetadata.minimumMetadata.namespaces.push_back(metadata);
        EXPECT_THROW(AC::ACMessageEncoder::EncoderACMessage(message, u"r"), xercesc::DOMException);
    }
}

}  // namespace
