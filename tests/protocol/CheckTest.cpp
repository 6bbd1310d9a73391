#include "assetconnector/host/ferrite/ReservedCharacters.h"
#include "tests/protocol/Found.h"
#include "tests/support/HostTest.h"
#include "tests/support/SmallStack.h"

#include <algorithm>
#include <set>

namespace {

using namespace Protocol;

std::string InRoot(const std::string& content)
{
    return "<browserMessage>" + content + "</browserMessage>";
}

/// \return A text with a value at a place and nothing else.
std::string TextWith(const Place& place, const std::string& value)
{
    UTF16String encoded;
    ferrite::xml::utils::EncodeReservedCharacters(U(value), encoded);
    const std::string attribute(AttributeOf(place.path));
    const std::string name(ElementOf(place.path));
    std::string text = attribute.empty() ? '<' + name + '>' + Narrow(encoded) + "</" + name + '>'
                                         : '<' + name + ' ' + attribute + "=\"" + Narrow(encoded) + "\"/>";
    for (std::string_view around = ParentOf(place.path); !around.empty(); around = ParentOf(around)) {
        const std::string element(ElementOf(around));
        text = '<' + element + '>' + text + "</" + element + '>';
    }
    return InRoot(text);
}

/// \return How many findings there are of a place, but for those that want more than it.
std::size_t FindingsOf(const Place& place, const std::string& value)
{
    const std::set<std::string> kMore{"time-without-rate", "lacks-companion", "item-left-out"};
    const std::vector<Finding> findings = Check(ThisModel(), TextWith(place, value), "");
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) {
            EXPECT_TRUE(finding.path == place.path || kMore.count(finding.kind) == 1) << finding.what;
            return kMore.count(finding.kind) == 0;
        }));
}

TEST(Check, KnowsTheFormOfEachPlace)
{
    for (const Place& place : ThisModel().places) {
        const Form* const form = FindForm(ThisModel(), place.form);
        if (!place.read || form == nullptr || ElementOf(place.path) == "*")
            continue;
        EXPECT_EQ(FindingsOf(place, place.sample), 0U) << place.path;
        if (!form->malformedSample.empty()) {
            EXPECT_EQ(FindingsOf(place, form->malformedSample), 1U) << place.path;
        }
    }
}

constexpr const char* kGuid = "0f8b2c1e-5d3a-4b6f-9e7c-1a2b3c4d5e6f";

/// What a request says of itself.
constexpr const char* kIdentifiers =
    "<msgID ID='0f8b2c1e-5d3a-4b6f-9e7c-1a2b3c4d5e6f'/><taskID ID='6a1d9e04-2b7c-4f35-8c90-d4e5f6a7b8c9'/>";

TEST(Check, FindsWhatIsWrongAndNothingElse)
{
    const std::string guid = kGuid;
    const std::string columns = "<newDynamicColumns>";
    const struct
    {
        std::string content;
        const char* found;
    } kRows[] = {
        // Names and places.
        {"<FileList><x/></FileList>", "wrong-case FileList"},
        {"<assetItemList><assetItem><assetItemList><assetItem><nam/></assetItem></assetItemList></assetItem>"
         "</assetItemList>",
         "unknown-element assetItemList/assetItem/nam"},
        {"<fileList><filePath Path='/a'/></fileList>", "wrong-case fileList/filePath@Path"},
        {"<filePath path='/a' ID='1' xmlns:x='y' xml:lang='en'/>", "wrong-place filePath@ID"},
        {"<renameItem src='/a' newName='b'/>", "wrong-place renameItem"},
        {"<clipFormat/>", "host-writes clipFormat"},
        {"<ingestMediaItemList><clipFormat/></ingestMediaItemList>",
         "host-writes ingestMediaItemList/clipFormat"},
        {"<filePath path='/a'/><x/><filePath path='/b'/>", "unknown-element x, doubled filePath"},
        {"<customMetadata><minimumMetadata><namespace><any/><any/></namespace><namespace><any/></namespace>"
         "</minimumMetadata></customMetadata>",
         "doubled customMetadata/minimumMetadata/namespace/any"},
        {"<transferItemList><transferItem dst='' dstParent='/f'/></transferItemList>", ""},
        // Texts and attributes.
        {"<msgID>" + guid + "</msgID>", "text-for-attribute msgID"},
        {"<transferItemList><transferItem><src>/a</src></transferItem></transferItemList>",
         "text-for-attribute transferItemList/transferItem/src"},
        {"<fileInfoList><fileInfo filePath='/a'/></fileInfoList>",
         "attribute-for-text fileInfoList/fileInfo@filePath"},
        {"<fileList><path>/a</path></fileList>", "text-for-attribute fileList/path"},
        {"<fileList type='clip'/>", "attribute-for-text fileList@type"},
        {"<errorInfo text='x'/>", "attribute-for-text errorInfo@text"},
        {"<errorInfo text='x'>y</errorInfo>", "unknown-attribute errorInfo@text"},
        {"<filePath path='/a'>text</filePath>", "stray-text filePath"},
        {"text", "stray-text"},
        {"<errorInfo>a<!-- b -->c<b/></errorInfo>", "unknown-element errorInfo/b"},
        {"<errorInfo>\n<b/>c</errorInfo>", "element-before-text errorInfo"},
        {"<errorInfo><![CDATA[a]]>\n</errorInfo>", ""},
        {"<errorInfo><![CDATA[a]]><![CDATA[b]]></errorInfo>", "cdata-beside-text errorInfo"},
        // Items.
        {"<assetItemList><assetItem/></assetItemList>", ""},
        {"<assetItemList><assetItem/><assetItem/></assetItemList>",
         "no-order assetItemList/assetItem@order, no-order assetItemList/assetItem@order"},
        {"<assetItemList><assetItem order=''/><assetItem order='0'/></assetItemList>",
         "number-reads-as-zero assetItemList/assetItem@order, same-order assetItemList/assetItem@order"},
        {"<assetItemList><assetItem order='1'/><assetItem order='-2'/></assetItemList>",
         "no-order assetItemList/assetItem@order"},
        {columns + "<dynamicColumn name='a'/></newDynamicColumns>",
         "item-left-out newDynamicColumns/dynamicColumn@ID"},
        {columns + "<dynamicColumn ID='00000000-0000-0000-0000-000000000000'/></newDynamicColumns>",
         "item-left-out newDynamicColumns/dynamicColumn@ID"},
        {columns + "<dynamicColumn Id='x'/></newDynamicColumns>",
         "wrong-case newDynamicColumns/dynamicColumn@Id"},
        {"<dynamicColumnFieldValues><dynamicColumnFieldValue/></dynamicColumnFieldValues>",
         "item-left-out dynamicColumnFieldValues/dynamicColumnFieldValue/dynamicColumn@ID"},
        {"<assetItemList><assetItem order='1'/><assetItem order='1'><x/></assetItem><assetItem Order='2'/>"
         "</assetItemList>",
         "same-order assetItemList/assetItem@order, unknown-element assetItemList/assetItem/x, "
         "wrong-case assetItemList/assetItem@Order"},
        {"<dynamicColumnFieldValues><dynamicColumnFieldValue><x/><dynamicColumn ID='" + guid +
             "'/><assetId ID='" + guid + "'/></dynamicColumnFieldValue></dynamicColumnFieldValues>",
         "unknown-element dynamicColumnFieldValues/dynamicColumnFieldValue/x, "
         "wrong-case dynamicColumnFieldValues/dynamicColumnFieldValue/assetId"},
        {"<mediaPropertyInfo><framerate>f25</framerate><duration>1</duration></mediaPropertyInfo>",
         "wrong-case mediaPropertyInfo/framerate"},
        {"<mediaPropertyInfo><x/><duration>1 s</duration></mediaPropertyInfo>",
         "unknown-element mediaPropertyInfo/x, number-cut mediaPropertyInfo/duration, "
         "time-without-rate mediaPropertyInfo/duration"},
        {"<taskIDList><taskID ID=''/></taskIDList>", "item-left-out taskIDList/taskID@ID"},
        {"<mediaPropertyInfo><frameRate/><duration>1</duration></mediaPropertyInfo>",
         "time-without-rate mediaPropertyInfo/duration"},
        {"<mediaPropertyInfo><startTime>0</startTime><duration/></mediaPropertyInfo>", ""},
        // Values.
        {"<percentage>+42\n</percentage>", ""},
        {"<percentage/>", ""},
        {"<percentage>2147483648</percentage>", "number-reads-as-zero percentage"},
        {"<percentage>0 of 10</percentage>", "number-cut percentage"},
        {"<ftpSetting ftpPort='21 or so'/>", "number-cut ftpSetting@ftpPort"},
        {"<mediaPropertyInfo><frameRate>f254016000000</frameRate></mediaPropertyInfo>", ""},
        {"<mediaPropertyInfo><frameRate> f29.97\r\n</frameRate></mediaPropertyInfo>", ""},
        {"<mediaPropertyInfo><frameRate>f25s0</frameRate></mediaPropertyInfo>",
         "rate-reads-as-none mediaPropertyInfo/frameRate"},
        {"<mediaPropertyInfo><frameRate>f</frameRate></mediaPropertyInfo>",
         "rate-reads-as-none mediaPropertyInfo/frameRate"},
        {"<mediaPropertyInfo><frameRate>f30000/1001</frameRate></mediaPropertyInfo>",
         "number-cut mediaPropertyInfo/frameRate"},
        {"<msgID ID='00000000-0000-0000-0000-000000000000'/>", ""},
        {"<msgID ID=' " + guid + "'/>", "guid-reads-as-zero msgID@ID"},
        {"<allowExit>FALSE</allowExit>", ""},
        {"<outputXMP> </outputXMP>", "unknown-word outputXMP"},
        {"<allowExit> </allowExit>", ""},
        {"<allowExit>1</allowExit>", "unknown-word allowExit"},
        {"<transferOption>Keep</transferOption>", ""},
        {"<transferOption>Overwite</transferOption>", "unknown-word transferOption"},
        {"<assetItemList><assetItem><assetMetadata><a/></assetMetadata></assetItem></assetItemList>",
         "encoded-once assetItemList/assetItem/assetMetadata"},
        {"<assetMediaInfoList><assetMediaInfo><fileMetadata><xmp><![CDATA[<x/>]]></xmp></fileMetadata></"
         "assetMediaInfo>"
         "<assetMediaInfo><fileMetadata><xmp>\n&lt;![CDATA[&lt;x/>]]&gt;\n</xmp></fileMetadata></"
         "assetMediaInfo>"
         "</assetMediaInfoList>",
         ""},
        {"<assetMediaInfoList><assetMediaInfo><fileMetadata><xmp>x&lt;![CDATA[&lt;x/>]]&gt;</xmp></"
         "fileMetadata>"
         "</assetMediaInfo></assetMediaInfoList>",
         "xmp-without-markers assetMediaInfoList/assetMediaInfo/fileMetadata/xmp"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Found(InRoot(row.content)), row.found) << row.content;
}

TEST(Check, SaysWhatHappensAndWhatToDo)
{
    const struct
    {
        const char* content;
        const char* line;
    } kRows[] = {
        {"<mediaPropertyInfo><duration>1</duration></mediaPropertyInfo>",
         "<duration> has no rate: it reads as 0; add <frameRate> beside it"},
        {"<assetItemList><assetItem name='x'/></assetItemList>",
         "the attribute \"name\" of <assetItem> is not read: here it is an element; write <name>...</name>"},
        {"<assetItemList><assetItem assetID='x'/></assetItemList>",
         "the attribute \"assetID\" of <assetItem> is not read: here it is an element; write <assetID "
         "ID=\"...\"/>"},
        {"<assetItemList><assetItem><nmae/></assetItem></assetItemList>",
         "<nmae> is not read: nothing is called so; the nearest name here is <name>"},
        {"<fileList><keywrd/></fileList>",
         "<keywrd> is not read: nothing is called so; the nearest name is keyword, which belongs in "
         "customMetadata/minimumMetadata/keywords"},
        {"<cliFormat/>", "<cliFormat> is not read: nothing is called so; leave it out"},
        {"<startTime/>", "<startTime> is not read here; it belongs in assetItemList/assetItem, among others"},
        {"<assetItemList><assetItem><taskID ID=''/></assetItem></assetItemList>",
         "<taskID> is not read here; it belongs directly in the root, among others"},
        {"<ftpSetting ftpPort='+1'/>",
         "\"ftpPort\" of <ftpSetting> is \"+1\", which reads as 0: it has a sign; write a whole number "
         "without a sign"},
        {"<percentage>-99999999999</percentage>",
         "<percentage> is \"-99999999999\", which reads as 0: it is too large; write a smaller number"},
        {"<percentage>-</percentage>", "<percentage> is \"-\", which reads as 0; write a whole number"},
        {"<taskIDList><taskID ID='x'/></taskIDList>",
         "\"ID\" of <taskID> is \"x\", which is no GUID and reads as that of zeros; write hexadecimal "
         "digits in groups of 8, 4, 4, 4 and 12"},
        {"<deleteDynamicColumns><dynamicColumn ID='x'/></deleteDynamicColumns>",
         "\"ID\" of <dynamicColumn> is \"x\", which is no GUID, so that the item is left out; write "
         "hexadecimal digits in groups of 8, 4, 4, 4 and 12"},
        {"<actionResultList><actionResult><result>Cancelled</result></actionResult></actionResultList>",
         "<result> is \"Cancelled\", and it is none of the words (one of the five, exactly); write Canceled"},
    };
    for (const auto& row : kRows) {
        const std::vector<Finding> findings = Check(ThisModel(), InRoot(row.content), "");
        ASSERT_EQ(findings.size(), 1U) << row.content;
        EXPECT_EQ(findings.front().what + "; " + findings.front().advice, row.line);
    }
}

TEST(Check, TellsWhatARequestNeedsAndReads)
{
    const std::string event = "com.velmo.browser.event.";
    const std::string header =
        "<browserID ID='p'/>" + std::string(kIdentifiers) + "<batchID ID='" + kGuid + "'/>";
    const std::string list = "<assetMediaInfoList><assetMediaInfo/></assetMediaInfoList>";
    const struct
    {
        const char* event;
        std::string content;
        const char* found;
    } kRows[] = {
        {"OpenIngestDialog", header, ""},
        {"OpenIngestDialog", "", "no-identifier, no-identifier"},
        {"InsertDynamicColumns", "", ""},
        {"OpenIngestDialog", header + list, "not-read-by-request assetMediaInfoList"},
        {"WriteXMPToDisk", header + list, ""},
        {"WriteXMPToDisk", header, "needed-by-request"},
        {"WriteXMPToDisk",
         header + "<assetMediaInfoList><assetMediaInfo><forceLoadFromLoalDisk>false</forceLoadFromLoalDisk>"
                  "</assetMediaInfo></assetMediaInfoList>",
         ""},
        {"ReadXMPFromDisk", header, "needed-by-request"},
        {"ImportXMP", header + "<fileList><filePath path=''/></fileList>",
         "needed-by-request, item-left-out fileList/filePath@path"},
        {"TriggerSaveAsset",
         header + "<assetItemList><assetItem order='2'/><assetItem order='1'/></assetItemList>", ""},
        {"ExitApp", "<unknown/>", "unknown-element unknown"},
        {"exitapp", "", "unknown-event"},
        {"SelectAssets", list, "not-handled"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Found(InRoot(row.content), event + row.event), row.found) << row.event << row.content;
    EXPECT_EQ(Found("<a>", "ExitApp"), "unknown-event, not-well-formed");
}

TEST(Check, NeverPrintsAPassword)
{
    for (const char* const content : {
             "<ftpSetting ftpPassword='hunter22' hunter22='' ftpPort='hunter22'/>",
             "<ftpSetting ftpPassword='hunter22' ftpPort='21hunter22'/><hunter22/>",
             "<ftpSetting FTPPassword=' hunter22'/><percentage>hunter22</percentage>",
             "<ftpSetting><ftpPassword>hunter22</ftpPassword></ftpSetting><type>hunter22</type>",
             "<ftpSetting password='hunter22'/><errorInfo>no hunter22 there</errorInfo>",
             "<allowExit>ftp://a:hunter22@b/</allowExit>",
             "<percentage>ftp://a:x/hunter22@b/</percentage>",
             "<msgID ID='ftp://a@b:hunter22@c'/>",
             "<filePath path='ftp://a:&hunter22;@b'/>",
             "<ftpSetting ftpPassword='a'hunter22'/>",
             "<ftpSetting ftpPassword='a'><hunter22></ftpSetting>",
         }) {
        const std::vector<Finding> findings = Check(ThisModel(), InRoot(content), "");
        EXPECT_FALSE(findings.empty()) << content;
        for (const Finding& finding : findings)
            EXPECT_EQ((finding.path + Describe(finding)).find("hunter22"), std::string::npos)
                << Describe(finding);
    }
    EXPECT_EQ(Found(InRoot("<ftpSetting ftpUserName='ingest' ftpPassword='ingest'/><filePath path='/ingest'/>"
                           "<errorInfo>ingested</errorInfo>")),
              "");
    for (const char* const seen : {"with ingest", "ingest was wrong", "(ingest)"})
        EXPECT_EQ(Found(InRoot("<ftpSetting ftpPassword='ingest'/><errorInfo>" + std::string(seen) +
                               "</errorInfo>")),
                  "password-seen errorInfo");
    std::string many;
    for (int i = 0; i < 20; ++i)
        many += "<x password='hidden" + std::to_string(i) + "'/>";
    EXPECT_EQ(Check(ThisModel(), InRoot("<percentage>hidden19</percentage>" + many), "").front().what,
              "<percentage> is \"***\", which reads as 0");
}

TEST(Check, QuotesWhatIsHarmlessAndShort)
{
    const std::string value = "a\xC2\x85\nb" + Repeated("\xC3\xA9", 100000);
    const std::vector<Finding> findings =
        Check(ThisModel(), InRoot("<percentage>" + value + "</percentage><" + Repeated("x", 1000) + "/>"),
              "\xAC" + value);
    ASSERT_EQ(findings.size(), 3U);
    for (const Finding& finding : findings) {
        const std::string line = Describe(finding);
        EXPECT_LT(line.size(), 300U);
        EXPECT_EQ(Narrow(U(line)), line);
        EXPECT_EQ(line.find_first_of("\n\r"), std::string::npos);
        EXPECT_EQ(line.find("\xC2\x85"), std::string::npos);
    }
}

/// The deepest text there may be, with a finding at each level, on a small stack.
TEST(Check, TakesDeepTexts)
{
    OnSmallStack([] {
        const std::string text =
            InRoot(kIdentifiers + Repeated("<assetItemList><assetItem><x/>", kDeepItems) +
                   Repeated("</assetItem></assetItemList>", kDeepItems));
        EXPECT_EQ(Check(ThisModel(), text, "com.velmo.browser.event.TriggerSaveAsset").size(), kDeepItems);
    });
}

}  // namespace
