// No password, and of a masked recording no word of the host's, is in the bytes of a file; and it replays.

#include "assetconnector/connectors/EventCatalogue.h"
#include "tests/support/RecordedHost.h"

namespace {

struct Text
{
    const char* name;
    std::string data;
};

class Passwords : public RecordedHost, public testing::WithParamInterface<Text>
{
};

TEST_P(Passwords, AreNotInTheFile)
{
    BeginWithConnectors();
    for (const UTF16String& type : {AC::kPlexaEventType_TransferRequest, AC::kPlexaEventType_ReadXMPFromDisk,
                                    AC::kPlexaEventType_ReportEvent, AC::kPlexaEventType_OpenIngestDlg})
        Raise(type, GetParam().data);
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("s3cret"), 0U) << recordings.Text();
    EXPECT_GT(CountOf("\n{\"station\":\"panel\""), 0U);
}

std::string Message(const std::string& content)
{
    return "<browserMessage><transferType>ftp</transferType>" + content +
           "<targetBin path=\"/kept\"/></browserMessage>";
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Passwords,
    testing::Values(
        Text{"plain", Message("<ftpSetting ftpPassword=\"s3cret\" ftpUserName=\"u\"/>")},
        Text{"singleQuotes", Message("<ftpSetting ftpPassword='s3\"cret s3cret'/>")},
        Text{"blanks", Message("<ftpSetting ftpPassword \n\t=\r\n 's3cret' />")},
        Text{"references", Message("<ftpSetting ftpPassword='&#115;3cret s3cret &amp;'/>")},
        Text{"prefixed", Message("<ftpSetting x:ftpPassword='s3cret' ftpPassword2='s3cret'/>")},
        Text{"quoteInComment", Message("<!-- don't --><ftpSetting ftpPassword=\"s3cret's3cret\"/>")},
        Text{"quoteInInstruction", Message("<?a don't ?><ftpSetting ftpPassword=\"s3cret's3cret\"/>")},
        Text{"inComment", Message("<!-- <ftpSetting ftpPassword=\"s3cret\"/> -->")},
        Text{"inInstruction", Message("<?a ftpPassword=\"s3cret\"?>")},
        Text{"element", Message("<ftpPassword>s3cret</ftpPassword>")},
        Text{"elementOfCdata", Message("<ftpPassword><![CDATA[s3cret]]></ftpPassword>")},
        Text{"elementWithAttribute", Message("<ftpPassword value='s3cret'/>")},
        Text{"inValue",
             Message("<event text=\"ftpPassword=s3cret\"/><targetBin path='ftpPassword s3cret'/>")},
        Text{"valueOfReferences", Message("<targetBin path='f&#116;p&#x50;assword s3cret'/>")},
        Text{"inContent", Message("<presetPath>ftpPassword: s3cret</presetPath>")},
        Text{"contentAndCdata",
             Message("<presetPath>ftpPassword<![CDATA[=s3cret]]><!-- --> s3cret</presetPath>")},
        Text{"inPieces", Message("<presetPath>ftp<![CDATA[Pass]]>word<!-- -->=s3cret</presetPath>")},
        Text{"cdata", Message("<presetPath><![CDATA[<a ftpPassword='s3cret'/>]]> s3cret</presetPath>")},
        Text{"property",
             Message("<assetMediaInfoList><assetMediaInfo><fileMetadata><customMetadata>ftpPassword s3cret"
                     "</customMetadata></fileMetadata></assetMediaInfo></assetMediaInfoList>")},
        Text{"otherCapitals",
             Message("<ftpSetting FTPpassword=\"s3cret\"/><ftppassword>s3cret</ftppassword>")},
        Text{"broken", "<browserMessage><ftpSetting ftpPassword=\"s3cret\""},
        Text{"brokenBefore",
             "<browserMessage><a b='1'b='2'><ftpSetting ftpPassword=\"s3cret\"/></browserMessage>"},
        Text{"brokenReferences", "<browserMessage a='&#102;tpPassword s3cret'>"},
        Text{"noMarkup", "ftpPassword s3cret"},
        Text{"doctype", "<!DOCTYPE a [<!ATTLIST ftpSetting ftpPassword CDATA 's3cret'>]><browserMessage/>"},
        Text{"hostile", Message("<presetPath>" + Repeated("ftpPassword= ", 100000) + "</presetPath>")},
        Text{"hostileComment", Message("<!-- " + Repeated("ftpPassword= ", 100000) + "-->")},
        Text{"hostileAttributes", Message("<a b='" + Repeated("ftpPassword= ", 100000) + "s3cret'/>")},
        Text{"hostileElements", Message(Repeated("<ftpPassword>s3cret</ftpPassword>", 30000))},
        Text{"hostileSections", Message("<presetPath>" + Repeated("ftpPassword<![CDATA[", 100000))},
        Text{"hostileReferences", Message("<presetPath>" + Repeated("&#102", 100000))}),
    [](const auto& each) { return std::string(each.param.name); });

/// Throws what holds a password, answers with one and gets one back.
struct TellingLibrary : ReferenceHost::IngestLibrary
{
    UTF16String CreateCustomMetadataStr(const Ridge::CustomMetadata& /*metadata*/) override
    {
        return u"{\"ftpPassword\":\"s3cret\"}";
    }
    Ridge::ResultCode ReadXMPFromCache(const UTF16String& /*path*/, const Ridge::XMPText& holder,
                                       UTF16String& /*scratch*/) override
    {
        *holder = "<x ftpPassword='s3cret'/>";
        return 0;
    }
};

TEST_F(RecordedHost, SecretsOfTheHostAreMasked)
{
    TellingLibrary telling;
    Begin({host.GetPanelEvents(), host.GetStations(), telling, host.GetFiles(), host.GetTexts(),
           host.GetMemory()});
    MakeConnectors();
    Ridge::CustomMetadata metadata;
    metadata.minimumMetadata.namespaces.push_back(boost::make_shared<Ridge::NamespaceMetadata>());
    metadata.minimumMetadata.namespaces.back()->properties[u"ftpPassword"] = u"s3cret";
    library->OnReadXMPFinished({}, {}, 0, u"/a", {}, metadata,
                               boost::make_shared<std::string>("<x ftpPassword=\"s3cret\"/>"), {}, {}, {}, {},
                               {}, {});
    library->OnIngestItemsReady({}, {}, {}, {}, metadata);
    library->OnTranscodeStatus({}, {}, -1, u"wrong ftpPassword s3cret", u"/out");
    collection->OnTranscodeStatus({}, {}, -1, u"wrong ftpPassword s3cret", u"/out");
    host.GetStations().DeliverPosted();
    AC::ACMessage message;
    message.ftpSetting.ftpPassword = u"s3cret";
    recorder->RegisterAssetMediaInfoToSRCore(message, true, false);
    Raise(AC::kPlexaEventType_ReadXMPFromDisk,
          "<browserMessage><mediaUseLocalFile>true</mediaUseLocalFile><assetMediaInfoList><assetMediaInfo>"
          "<type>masterClip</type></assetMediaInfo></assetMediaInfoList></browserMessage>");
    panel->act = [] { throw std::runtime_error("login with ftpPassword s3cret"); };
    EXPECT_THROW(library->OnIngestStarted({}), std::runtime_error);
    End();
    ExpectReplays();
    EXPECT_EQ(CountOf("s3cret"), 0U) << recordings.Text();
}

/// What one text writes in another way than the next one: line ends, references, what no text can carry.
TEST_F(RecordedHost, OddTextsReplayMasked)
{
    options.masksContents = true;
    Begin();
    MakeConnectors();
    const std::string odd[] = {
        "z\r\nz\tz",      "z&#xFC;z &#233;z &#xD;",         "z&amp;#xFC;z",   "z\x01z\x02",
        "z\xFFz\xC0\x80", std::string("z\0z", 3),           "z\xEF\xBF\xBDz", "z\xEF\xBF\xBFz",
        "z]]>z<a>z",      "\xF0\x9F\x98\x80z\xC3\xBCz-z_z", "#xFC;z",         "&#x;&#;&#z;"};
    for (const std::string& text : odd) {
        const UTF16String path = U("/z" + text + "/z.mov");
        library->OnReadXMPFinished({}, {}, 0, path, {}, {}, boost::make_shared<std::string>(text), path, path,
                                   {}, {}, {}, {});
        collection->OnReadXMPFinished({}, {}, 0, path, {}, {}, boost::make_shared<std::string>(text), path,
                                      path, {}, {}, {}, {});
        library->OnTranscodeStatus({}, {}, -1, U(text), path);
        collection->OnSaveAsset({}, {}, {}, nullptr, false);
    }
    Raise(AC::kPlexaEventType_OpenIngestDlg,
          "<browserMessage><targetBin ID=\"z&#xFC;z&#xD;z&#50;z&amp;#xFC;z&#45;z\"/></browserMessage>");
    Raise(AC::kPlexaEventType_ReadXMPFromDisk,
          "<browserMessage><assetMediaInfoList><assetMediaInfo><filePath path=\"/z\"/><fileMetadata><xmp>"
          "&lt;![CDATA[z&amp;#xFC;z&amp;#xD;]]&gt;</xmp></fileMetadata></"
          "assetMediaInfo><assetMediaInfo><fileMetadata>"
          "<xmp><![CDATA[<![CDATA[z&#xFC;z]]]]><![CDATA[>]]></xmp></fileMetadata></assetMediaInfo></"
          "assetMediaInfoList>"
          "</browserMessage>");
    End();
    ExpectReplays();
}

TEST_F(RecordedHost, WordsOfTheHostAreMasked)
{
    options.masksContents = true;
    Begin();
    MakeConnectors();
    Ridge::CustomMetadata metadata;
    metadata.minimumMetadata.namespaces.push_back(boost::make_shared<Ridge::NamespaceMetadata>());
    metadata.minimumMetadata.namespaces.back()->properties[u"zebra"] = u"heron";
    metadata.minimumMetadata.namespaces.back()->properties[u"heron"] = u"zebra";
    library->OnIngestItemsReady({}, {}, {}, {}, metadata);
    library->OnTranscodeStatus({}, {}, -1, u"h\u00E9ron: zebra", u"C:\\zebra\\heron.mov");
    Raise(AC::kPlexaEventType_OpenIngestDlg,
          "<browserMessage><targetBin path=\"/z&#101;bra/heron\"/><!-- zebra --><zebra "
          "a='heron'/></browserMessage>");
    Raise(AC::kPlexaEventType_OpenIngestDlg, "zebra <heron");
    panel->act = [] { throw std::runtime_error("zebra/heron"); };
    EXPECT_THROW(library->OnIngestStarted({}), std::runtime_error);
    End();
    ExpectReplays();
    for (const char* const word : {"zebra", "heron", "h\xC3\xA9ron", "&#"})
        EXPECT_EQ(CountOf(word), 0U) << recordings.Text();
}

}  // namespace
