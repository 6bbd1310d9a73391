#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/message/Comparison.h"
#include "assetconnector/xml/XMLUtilities.h"
#include "tests/support/HostTest.h"
#include "tests/support/SmallStack.h"

#include <boost/make_shared.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <linux/limits.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

using AC::ACMessage;
using AC::ACMessageDecoder::DecodeXMLString;

using Decoder = HostTest;
using Encoder = HostTest;

TEST_F(Decoder, RefusesHostileTexts)
{
    std::string names;
    for (int i = 0; i < 50000; ++i)
        names += "<n" + std::to_string(i) + "/>";
    std::string colliding;  // "Az" and "BT" have the same hash
    for (unsigned i = 0; i < 1100; ++i) {
        colliding += '<';
        for (unsigned bit = 0; bit < 11; ++bit)
            colliding += (i >> bit & 1U) == 0 ? "Az" : "BT";
        colliding += "/>";
    }
    const std::string bomb =
        "<!DOCTYPE a [<!ENTITY x \"xxxxxxxxxx\"><!ENTITY y \"&x;&x;&x;&x;&x;&x;&x;&x;\">]>";
    struct
    {
        const char* name;
        std::string text;
    } const rows[] = {
        {"empty", ""},
        {"white space", "  \n"},
        {"no markup", "host"},
        {"two roots", "<a/><b/>"},
        {"text behind the root", "<a/>x"},
        {"truncated", "<a><filePath path=\"/x\"/><errorInfo>cut"},
        {"mismatched", "<a><b></a></b>"},
        {"doctype", "<!DOCTYPE a><a/>"},
        {"external subset", "<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><a/>"},
        {"external entity", "<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><a>&x;</a>"},
        {"parameter entity", "<!DOCTYPE a [<!ENTITY % x SYSTEM \"file:///etc/passwd\"> %x;]><a/>"},
        {"entity bomb", bomb + "<a>&y;</a>"},
        {"quadratic blow-up", "<!DOCTYPE a [<!ENTITY x \"" + Repeated("x", 100000) + "\">]><a>" +
                                  Repeated("&x;", 100000) + "</a>"},
        {"unknown entity", "<a><result>&nbsp;</result></a>"},
        {"control character", "<a><result>\x01</result></a>"},
        {"reference to a control character", "<a><result>&#1;</result></a>"},
        {"reference to a surrogate", "<a><result>&#xD800;</result></a>"},
        {"bare ampersand", "<a><result>a & b</result></a>"},
        {"doubled attribute", "<a><host ID=\"1\" ID=\"2\"/></a>"},
        {"4,097 levels", Repeated("<a>", 4097) + Repeated("</a>", 4097)},
        {"4,097 levels beside empty elements", Repeated("<a><b/><b/>", 4097) + Repeated("</a>", 4097)},
        {"50,001 names", "<a>" + names + "</a>"},
        {"1,100 names of one hash", "<a>" + colliding + "</a>"},
        {"a million levels", Repeated("<a>", 1000000)},
    };
    for (const auto& row : rows) {
        ACMessage message;
        AC::ParseError error;
        EXPECT_FALSE(DecodeXMLString(U(row.text), message, error)) << row.name;
        EXPECT_FALSE(error.reason.empty()) << row.name;
        EXPECT_TRUE(AC::Comparison::Same(message, ACMessage())) << row.name;
    }
    for (const UTF16String& unit :
         {UTF16String(1, u'\0'), UTF16String(1, 0xD800), UTF16String(1, 0xDC00), UTF16String(1, 0xFFFE)}) {
        ACMessage message;
        EXPECT_FALSE(DecodeXMLString(u"<a><result>x" + unit + u"y</result></a>", message));
        EXPECT_FALSE(DecodeXMLString(u"<a/>" + unit, message));
        EXPECT_FALSE(DecodeXMLString(u"<a><filePath path='x" + unit + u"'/></a>", message));
    }
    // Bytes that were taken for another encoding.
    for (const UTF16String& text :
         {UTF16String{0xFFFE, 0x3C00, 0x6100, 0x2F00, 0x3E00}, UTF16String{0x3C00, 0x6100, 0x2F00, 0x3E00},
          UTF16String{0x613C, 0x3E2F}, UTF16String{u'<', 0, u'a', 0, u'/', 0, u'>', 0}}) {
        ACMessage message;
        EXPECT_FALSE(DecodeXMLString(text, message));
    }
}

TEST_F(Decoder, OpensNoFile)
{
    const auto path = std::filesystem::temp_directory_path() / ("opens-no-file-" + std::to_string(getpid()));
    std::ofstream(path) << "<!ENTITY x 'read'>";
    const int watch = inotify_init1(IN_NONBLOCK);
    ASSERT_GE(inotify_add_watch(watch, path.c_str(), IN_OPEN), 0);
    const std::string id = " SYSTEM \"file://" + path.string() + "\"";
    for (const std::string& text :
         {"<!DOCTYPE a" + id + "><a/>", "<!DOCTYPE a [<!ENTITY x" + id + ">]><a>&x;</a>",
          "<!DOCTYPE a [<!ENTITY % x" + id + "> %x;]><a>&x;</a>",
          "<a xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" i:noNamespaceSchemaLocation=\"file://" +
              path.string() + "\"/>",
          "<a><i:include xmlns:i=\"http://www.w3.org/2001/XInclude\" href=\"file://" + path.string() +
              "\"/></a>"}) {
        ACMessage message;
        DecodeXMLString(U(text), message);
    }
    char event[sizeof(inotify_event) + NAME_MAX + 1];
    EXPECT_EQ(read(watch, event, sizeof(event)), -1) << "the file was opened";
    static_cast<void>(std::ifstream(path).get());
    EXPECT_GT(read(watch, event, sizeof(event)), 0) << "nobody watches";
    close(watch);
    std::filesystem::remove(path);
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

TEST_F(Decoder, TellsWhereATextIsWrong)
{
    struct
    {
        UTF16String text;
        std::size_t line;
        std::size_t column;
        UTF16String reason;
    } const rows[] = {
        {u"<a>\n  <b></c>\n</a>", 2, 8, u"'b'"},
        {u"<!DOCTYPE a><a/>", 1, 13, u"DOCTYPE"},
        {u"<?xml version='1.2'?><a/>", 1, 22, u"version"},
        {u"<a>\n\n" + UTF16String(1, u'\0') + u"</a>", 3, 1, u"zero"},
        {u"<a>&nbsp;</a>", 1, 10, u"'nbsp'"},
        {u"<a><ftpSetting ftpPassword='&secret;'/></a>", 1, 37, u"entity '***'"},
        {u"<a><ftpSetting ftpPassword='a&secret'/></a>", 1, 37, u"'***'"},
        {u"<a><ftpSetting ftpPassword='a' secret='b' secret=''/></a>", 1, 50, u"'***'"},
        {u"<a><ftpSetting ftpPassword='a'/><secret/'/></a>", 1, 41, u"'***'"},
    };
    for (const auto& row : rows) {
        ACMessage message;
        AC::ParseError error;
        ASSERT_FALSE(DecodeXMLString(row.text, message, error));
        EXPECT_EQ(error.line, row.line) << Narrow(row.text);
        EXPECT_EQ(error.column, row.column) << Narrow(row.text);
        EXPECT_NE(error.reason.find(row.reason), UTF16String::npos) << Narrow(error.reason);
        EXPECT_EQ(error.reason.find(u"secret"), UTF16String::npos) << "a password may stand in a text";
    }
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

TEST_F(Decoder, IgnoresDeclaredEncodingAndByteOrderMark)
{
    for (const char* prefix : {"<?xml version=\"1.0\" encoding=\"US-ASCII\"?>",
                               "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>",
                               "\xEF\xBB\xBF", "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"x-none\"?>"}) {
        ACMessage message;
        ASSERT_TRUE(DecodeXMLString(U(std::string(prefix) + "<a><result>\xC3\xA9</result></a>"), message))
            << prefix;
        EXPECT_EQ(message.result, u"é");
    }
}

TEST_F(Decoder, LooksUpInLongLists)
{
    std::string properties;
    for (int i = 0; i < 10000; ++i)
        properties += "<p" + std::to_string(i) + ">" + std::to_string(i) + "</p" + std::to_string(i) + ">";
    std::string attributes;
    for (int i = 0; i < 20000; ++i)
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
