#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/message/MessageConstants.h"
#include "protocol/Schemas.h"
#include "session/format/Json.h"
#include "tests/protocol/Found.h"
#include "tests/support/FilledRecords.h"
#include "tests/support/HostTest.h"
#include "tests/support/TextFile.h"
#include "tests/support/XMLLint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

using namespace Protocol;

namespace {

using Texts = std::vector<std::string>;

/// A schema with what runs it.
struct Schema
{
    const char* option;
    std::string (*make)(const Model& model);
};
constexpr Schema kNotifications{"--schema", NotificationsXsd};
constexpr Schema kRequests{"--relaxng", RequestsRng};

/// Tries them all in one run.
void Expect(bool isValid, const Schema& schema, const Texts& texts)
{
    ASSERT_FALSE(texts.empty());
    const Texts complaints = Complaints(schema.option, schema.make(ThisModel()), texts);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_NE(complaints[i], kNotValidated);
        EXPECT_EQ(complaints[i].empty(), isValid) << texts[i] << complaints[i];
    }
}

/// ImportXMPStatus is decoded at one connector alone; it counts as decoded.
bool IsDecoded(const Event& event)
{
    return std::any_of(event.sent.begin(), event.sent.end(), [](const Sending& way) { return way.decoded; });
}

Texts Examples(const char* kind)
{
    Texts texts;
    for (const Event& event : ThisModel().events)
        if (event.kind == kind && !IsDecoded(event))
            texts.push_back(event.example);
    return texts;
}

/// \return The text with a mistake for each element that the model knows: an attribute that is none.
Texts WithStrangeAttributes(const std::string& text)
{
    Texts mutants;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        const std::size_t end = text.find_first_of(" />\n", at + 1);
        const std::string name = text.substr(at + 1, end - at - 1);
        const auto& places = ThisModel().places;
        if (std::any_of(places.begin(), places.end(),
                        [&name](const Place& place) { return ElementOf(place.path) == name; }))
            mutants.push_back(std::string(text).insert(end, " strange=\"\""));
    }
    return mutants;
}

/// A change of a valid text that makes it invalid.
struct Mistake
{
    const char* from;
    const char* to;
};

void ExpectMistakesFound(const Schema& schema, const std::string& text, const std::vector<Mistake>& mistakes)
{
    Expect(true, schema, {text});
    Texts mutants;
    for (const auto& [from, to] : mistakes) {
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        mutants.push_back(std::string(text).replace(at, std::string(from).size(), to));
    }
    Expect(false, schema, mutants);
}

using Schemas = HostTest;

}  // namespace

TEST_F(Schemas, NotificationsOfSessionsAndExamplesAreValid)
{
    Texts texts = Examples("notification");
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/sessions")) {
        std::ifstream lines(entry.path());
        for (std::string line; std::getline(lines, line);) {
            const Session::Json json =
                line.empty() || line[0] != '{' ? Session::Json() : Session::ParseJson(line);
            if (!json.contains("notification"))
                continue;
            const Event* const event = FindEvent(ThisModel(), json.at("notification").get<std::string>());
            ASSERT_NE(event, nullptr) << line;
            if (!IsDecoded(*event))
                texts.push_back(json.at("data").get<std::string>());
        }
    }
    Expect(true, kNotifications, texts);
}

TEST_F(Schemas, RecordsAreValidAsNotifications)
{
    Texts texts;
    for (const char* name : {"everything", "partial", "nothing"})
        texts.push_back(TextOf(std::string(TEST_DATA "/records/") + name + ".xml"));
    for (std::uint32_t seed = 0; seed < 1000; ++seed)
        texts.push_back(
            AC::ACMessageEncoder::EncodeUTF8(Filler(seed).Make<AC::ACMessage>(), AC::kNotificationRoot));
    Expect(true, kNotifications, texts);
}

/// Those of the sessions in which the checker finds nothing: the two agree on what is right.
TEST_F(Schemas, ExamplesAndRightRequestsAreValid)
{
    const std::regex kEmptyElement("<(\\w+)></\\1>");
    Texts texts = Examples("request");
    const std::size_t examples = texts.size();
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/sessions")) {
        std::ifstream lines(entry.path());
        for (std::string line; std::getline(lines, line);) {
            if (line.compare(0, 9, "{\"panel\":") != 0)
                continue;
            const Session::Json json = Session::ParseJson(line);
            const std::string text = json.at("data");
            // The host takes any name of the root, and an empty element as a missing one.
            if (text.compare(0, 15, "<browserMessage") == 0 && !std::regex_search(text, kEmptyElement) &&
                Found(text, json.at("panel")).empty())
                texts.push_back(text);
        }
    }
    EXPECT_GT(texts.size(), examples);
    Expect(true, kRequests, texts);
}

TEST_F(Schemas, NoElementTakesAStrangeAttribute)
{
    Expect(false, kNotifications, WithStrangeAttributes(TextOf(TEST_DATA "/records/everything.xml")));
    Texts requests;
    for (const std::string& example : Examples("request"))
        for (std::string& mutant : WithStrangeAttributes(example))
            requests.push_back(std::move(mutant));
    Expect(false, kRequests, requests);
}

TEST_F(Schemas, MistakesInNotificationsAreFound)
{
    const std::string text =
        "<hostNotification><browserID ID=\"panel-1\"/>"
        "<msgID ID=\"0f8b2c1e-5d3a-4b6f-9e7c-1a2b3c4d5e6f\"/>"
        "<assetItemList><assetItem order=\"1\"><startTime>-5</startTime><frameRate>f-25s3</frameRate>"
        "<type>unKnown</type><assetItemList><assetItem order=\"2\"/></assetItemList></assetItem>"
        "</assetItemList><actionResultList><actionResult><result>OK</result></actionResult></"
        "actionResultList>"
        "<actionResultList/><allowExit>true</allowExit><currentWorkMode/></hostNotification>";
    ExpectMistakesFound(
        kNotifications, text,
        {
            {"<hostNotification>", "<hostNotification><unknown/>"},
            {"<browserID ID=\"panel-1\"/>", "<browserid ID=\"panel-1\"/>"},
            {" ID=\"panel-1\"", ""},
            {"<hostNotification>", "<hostNotification>text"},
            {"0f8b2c1e", "0F8B2C1E"},
            {"-1a2b3c4d5e6f", ""},
            {"<startTime>-5", "<startTime>5.0"},
            {"<startTime>-5</startTime><frameRate>f-25s3</frameRate>",
             "<frameRate>f-25s3</frameRate><startTime>-5</startTime>"},
            {"f-25s3", "25"},
            {"unKnown", "unknown"},
            {"order=\"2\"", "order=\"0\""},
            {"<assetItem order=\"2\"/>", "<assetItem order=\"2\"><unknown/></assetItem>"},
            {"<result>OK", "<result>Failed"},
            {"<actionResultList/>", "<actionResultList/><actionResultList/>"},
            {"<allowExit>true", "<allowExit>1"},
            {"<allowExit>true</allowExit>", "<allowExit>true</allowExit><allowExit>true</allowExit>"},
            {"<currentWorkMode/>", "<currentWorkMode><a/></currentWorkMode>"},
        });
}

TEST_F(Schemas, MistakesInRequestsAreFound)
{
    const std::string text =
        "<browserMessage><outputXMP>true</outputXMP><taskID ID=\"{0F8B2C1E-5d3a-4b6f-9e7c-1a2b3c4d5e6f}\"/>"
        "<assetItemList><assetItem><type>masterClip</type><name> n </name><startTime>1</startTime>"
        "<frameRate>f29.97</frameRate><assetItemList><assetItem order=\"3\"/></assetItemList></assetItem>"
        "</assetItemList><customMetadata><minimumMetadata><keywords><keyword>k</keyword></keywords>"
        "<namespace URI=\"u\"><any>v</any></namespace><namespace/></minimumMetadata></customMetadata>"
        "<ftpSetting ftpPort=\"21\"/><transferOption>overwrite</transferOption>"
        "<fileList><filePath path=\"a\"/><filePath path=\"b\"/></fileList></browserMessage>";
    ExpectMistakesFound(
        kRequests, text,
        {
            {"<browserMessage>", "<browserMessage><unknown/>"},
            {"<browserMessage>", "<browserMessage>text"},
            {"<outputXMP>true", "<outputXMP>True"},
            {"<outputXMP>true</outputXMP>", "<outputXMP>true</outputXMP><outputXMP>true</outputXMP>"},
            {"<outputXMP>true</outputXMP>", "<installed>true</installed>"},
            {"<outputXMP>true</outputXMP>", "<outputxmp>true</outputxmp>"},
            {" ID=\"{0F8B2C1E-5d3a-4b6f-9e7c-1a2b3c4d5e6f}\"", ""},
            {"masterClip", "MasterClip"},
            {"<startTime>1", "<startTime>1.5s"},
            {"f29.97", "29.97"},
            {"order=\"3\"", "order=\"third\""},
            {"<assetItem order=\"3\"/>", "<assetItem order=\"3\"><type>clip</type></assetItem>"},
            {"<any>v</any>", "<any><b/></any>"},
            {"ftpPort=\"21\"", "ftpPort=\"-21\""},
            {"<transferOption>overwrite", "<transferOption>keep"},
            {"<filePath path=\"a\"/>", "<filePath>a</filePath>"},
        });
}
