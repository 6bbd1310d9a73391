#include "assetconnector/message/Comparison.h"
#include "session/SimulatedObjects.h"
#include "session/ValueReader.h"
#include "tests/support/FilledRecords.h"
#include "tests/support/HostTest.h"

#include <gtest/gtest.h>

namespace {

using Session::Json;
using Session::ParseJson;
using Session::Style;
using Session::ValueReader;
using Session::ValueWriter;

class ValuesTest : public HostTest
{
protected:
    const ValueWriter writer = Session::SimulatedObjects::WriterFor(Style::kSession);
};

TEST_F(ValuesTest, EveryMemberOfARecordComesBack)
{
    for (std::uint32_t seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(seed);
        const auto message = Filler(seed).Make<AC::ACMessage>();
        const std::string text = writer.TextOf(message);
        const auto copy = ValueReader::Read<AC::ACMessage>(ParseJson(text));
        EXPECT_EQ(writer.TextOf(copy), text);

        AC::Description::ForEachMember<AC::ACMessage>([&](const auto& row) {
            using Value = std::decay_t<decltype(message.*row.member)>;
            // Compared by the objects themselves, or masked on the way.
            if constexpr (!std::is_same_v<Value, Kiln::InterfaceRef<KilnUnknown>> &&
                          !std::is_same_v<Value, AC::MarkerInfoList> &&
                          !std::is_same_v<Value, AC::FtpSetting>) {
                EXPECT_TRUE(AC::Comparison::Same(message.*row.member, copy.*row.member)) << row.name;
            }
        });
        EXPECT_EQ(copy.ftpSetting.ftpPassword, u"***");
        EXPECT_EQ(copy.ftpSetting.ftpPort, message.ftpSetting.ftpPort);
    }
}

TEST_F(ValuesTest, FormsOfValues)
{
    AC::ACMessage message;
    EXPECT_EQ(writer.TextOf(message),
              R"({"header":{"browserID":"","taskID":"00000000-0000-0000-0000-000000000000",)"
              R"("msgID":"00000000-0000-0000-0000-000000000000"}})");
    EXPECT_EQ(writer.TextOf(UTF16String(u"a\xD800z")), "\"a\uFFFDz\"");
    EXPECT_EQ(writer.TextOf(std::string("a\xFFz")), "\"a\uFFFDz\"");
    EXPECT_EQ(writer.TextOf(tempora::kTime_Invalid), "null");
    EXPECT_EQ(writer.TextOf(Ridge::kFailure), "-2147483648");
    EXPECT_EQ(writer.TextOf(AC::FtpSetting()),
              R"({"ftpServerName":"","ftpPort":0,"ftpUserName":"","ftpPassword":""})");
    EXPECT_EQ(writer.TextOf(Ridge::ColumnTexts{{{1, 2}, u"b"}}),
              R"([["00000000-0000-0001-0000-000000000002","b"]])");
    const auto info = ValueReader::Read<boost::shared_ptr<Ridge::AssetMediaInfo>>(Json::object());
    EXPECT_EQ(ParseJson(writer.TextOf(info)).size(),
              AC::Description::CountMembers<Ridge::AssetMediaInfoValues>());
    EXPECT_EQ(info->GetForceLoadFromLocalDisk(), -1);
}

TEST_F(ValuesTest, DeepTreesComeBackAndDeeperOnesAreRefused)
{
    const auto nested = [](std::size_t levels) {
        return "{\"assetItemList\":" + Repeated("[{\"subAssetItemList\":", levels) + "[]" +
               Repeated("}]", levels) + '}';
    };
    const Json deep = ParseJson(nested(2050));
    const Json written = ParseJson(writer.TextOf(ValueReader::Read<AC::ACMessage>(deep)));
    std::size_t levels = 0;
    for (const Json* list = &written["assetItemList"]; !list->empty();
         list = &list->front()["subAssetItemList"])
        ++levels;
    EXPECT_EQ(levels, 2050U);
    EXPECT_THROW(ParseJson(nested(100000)), Session::FormatError);
    EXPECT_THROW(ParseJson(Repeated("[", 1000000)), Session::FormatError);
}

TEST_F(ValuesTest, BadRecordsAreRefused)
{
    const struct
    {
        const char* json;
        const char* complaint;
    } kCases[] = {
        {R"({"filePath":"a","filePath":"a"})", "column 26: the key \"filePath\" is doubled"},
        {R"({"percentage":1.0})", "column 17: a number is written with a point or an exponent"},
        {"{\n\"percentage\":1e1\n}", "line 2, column 16: a number is written with a point or an exponent"},
        {R"({"percentage":18446744073709551616})", "column 34: the integer is out of range"},
        {R"({"percentage":2147483648})", "percentage: the integer is out of range"},
        {R"({"percentage":-2147483649})", "percentage: the integer is out of range"},
        {R"({"percentage":true})", "percentage: expected an integer"},
        {R"({"ftpSetting":{"ftpPort":-1}})", "ftpSetting: ftpPort: the integer is out of range"},
        {R"({"ftpSetting":{"ftpPort":4294967296}})", "ftpSetting: ftpPort: the integer is out of range"},
        {R"({"saveFlag":0})", "saveFlag: expected true or false"},
        {R"({"filePath":null})", "filePath: expected a string"},
        {R"({"file":""})", "unknown member \"file\""},
        {R"({"a\u0000":""})", "unknown member \"a\uFFFD\""},
        {R"({"fileList":{}})", "fileList: expected an array"},
        {R"({"event":[]})", "event: expected an object"},
        {R"({"batchID":"00000000000000000000000000000000"})", "batchID: malformed GUID"},
        {R"({"batchID":"{00000000-0000-0000-0000-000000000000"})", "batchID: malformed GUID"},
        {R"({"newDynamicColumns":[["00000000-0000-0000-0000-000000000001"]]})",
         "newDynamicColumns: [0]: expected 2 entries, not 1"},
        {R"({"newDynamicColumns":[["00000000-0000-0000-0000-000000000001","a"],)"
         R"(["{00000000-0000-0000-0000-000000000001}","b"]]})",
         "newDynamicColumns: [1]: the key is doubled"},
        {R"({"assetItemList":[{"subAssetItemList":[null,{"inPoint":""}]}]})",
         "assetItemList: [0]: subAssetItemList: [1]: inPoint: expected an integer"},
        {R"({"filePath":"\ud800"})",
         "column 20: not JSON: invalid string: surrogate U+D800..U+DBFF must be followed by U+DC00..U+DFFF"},
        {"{\"filePath\":\"\xC0\x80\"}", "column 14: not JSON: invalid string: ill-formed UTF-8 byte"},
        {"{}\n{}", "line 2, column 1: not JSON: unexpected '{'; expected end of input"},
    };
    for (const auto& each : kCases) {
        try {
            ValueReader::Read<AC::ACMessage>(ParseJson(each.json));
            ADD_FAILURE() << each.json;
        } catch (const Session::FormatError& error) {
            EXPECT_STREQ(error.what(), each.complaint) << each.json;
        }
    }
    EXPECT_THROW(ParseJson(std::string("{}\0", 3)), Session::FormatError);
}

}  // namespace
