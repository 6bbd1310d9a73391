// Random records through the XML texts and back.

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/message/Comparison.h"
#include "tests/support/DecodedForm.h"
#include "tests/support/FilledRecords.h"
#include "tests/support/HostTest.h"
#include "tests/support/MemberWalk.h"

namespace {

using AC::ACMessage;

/// Leaves what texts carry in both directions, and replaces what one of them cannot say.
void Restrict(ACMessage& message, Filler& random)
{
    MemberWalk(message, [](const auto& /*name*/, auto carried, auto& value, const auto& constructed) {
        if (carried != AC::Description::Carried::kBoth)
            value = constructed;
    });
    for (std::int32_t* const flag : {&message.mediaUseLocalFile, &message.deleteOnDisk, &message.allowExit})
        *flag = static_cast<std::int32_t>(random.Below(2));
    message.roughCutUseLocalFile = AC::kACMessage_False;  // else sub-items are not read
    for (UTF16String& path : message.fileList)
        path = u"media-" + path.substr(path.size() - 1);  // its own normal form on every system
    for (auto& result : message.actionResultList)
        result->result = random.Below(2) == 0 ? 0 : Ridge::kFailure;
    message.mediaPropertyInfo.frameRate = {tempora::kTicksPerSecond / 25};
    message.mediaPropertyInfo.startTime.ticks = message.mediaPropertyInfo.frameRate.ticksPerFrame * 7;
    message.mediaPropertyInfo.duration.ticks = message.mediaPropertyInfo.frameRate.ticksPerFrame * -8;
}

using RoundTrip = HostTest;

TEST_F(RoundTrip, BringsBackWhatBothDirectionsKnow)
{
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        Filler random(seed, true);
        auto message = random.Make<ACMessage>();
        Restrict(message, random);
        ACMessage copy;
        ASSERT_TRUE(AC::ACMessageDecoder::DecodeXMLString(
            AC::ACMessageEncoder::EncoderACMessage(message, AC::kNotificationRoot), copy));
        AC::Description::ForEachMember<ACMessage>([&](const auto& row) {
            if (row.carried == AC::Description::Carried::kBoth) {
                EXPECT_TRUE(AC::Comparison::Same(message.*row.member, copy.*row.member)) << row.name;
            }
        });
    }
}

TEST_F(RoundTrip, CarriesEveryUnitOrItsReplacement)
{
    std::mt19937 random(1);
    const char16_t edges[] = {0,      1,      u'\t',  u'\n',  u'\r',  0x1F,   u' ',   u'<',   u'>',
                              u'&',   u'"',   u'\'',  u']',   0x7F,   0x85,   0x2028, 0xD7FF, 0xD800,
                              0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFFFD, 0xFFFE, 0xFFFF};
    for (int round = 0; round < 2000; ++round) {
        UTF16String text = u"x";
        for (auto length = random() % 200; length > 0; --length)
            text += random() % 4 == 0 ? static_cast<char16_t>(random()) : edges[random() % std::size(edges)];
        UTF16String expected = text;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto isAt = [&text](std::size_t at, unsigned kind) {
                return at < text.size() && (text[at] & 0xFC00U) == kind;
            };
            const bool isLone =
                (isAt(i, 0xD800) && !isAt(i + 1, 0xDC00)) || (isAt(i, 0xDC00) && !isAt(i - 1, 0xD800));
            const bool isControl =
                text[i] < 0x20 && UTF16String(u"\t\n\r").find(text[i]) == UTF16String::npos;
            if (isLone || isControl || text[i] >= 0xFFFE)
                expected[i] = 0xFFFD;
        }
        ACMessage message;
        message.result = text;
        message.targetBin = text;
        const UTF16String xml = AC::ACMessageEncoder::EncoderACMessage(message, AC::kNotificationRoot);
        ACMessage copy;
        ASSERT_TRUE(AC::ACMessageDecoder::DecodeXMLString(xml, copy));
        EXPECT_EQ(copy.result, expected);
        EXPECT_EQ(copy.targetBin, expected);
        EXPECT_EQ(AC::ACMessageEncoder::EncodeUTF8(message, AC::kNotificationRoot),
                  ferrite::utility::UTF16to8(xml));
        const UTF16String decoded = DecodedForm(xml);
        EXPECT_EQ(AC::ACMessageEncoder::EncodeDecodedUTF8(message, AC::kNotificationRoot),
                  ferrite::utility::UTF16to8(decoded));
    }
}

/// A packet with line ends of any kind, in the form with CDATA sections, is what a parser gives a panel.
TEST_F(RoundTrip, LeavesPacketsWholeInTheDecodedForm)
{
    Ridge::AssetMediaInfoValues values;
    values.xmpString = boost::make_shared<std::string>("<x a='&#xD;'>\r\n\rb\n</x>");
    ACMessage message;
    message.assetMediaInfoList.push_back(boost::make_shared<ReferenceHost::MediaInfo>(values));
    message.errorInfo = u"\r";
    const std::string text = AC::ACMessageEncoder::EncodeDecodedUTF8(message, AC::kNotificationRoot);
    EXPECT_EQ(text, ferrite::utility::UTF16to8(
                        DecodedForm(AC::ACMessageEncoder::EncoderACMessage(message, AC::kNotificationRoot))));
    ACMessage copy;
    ASSERT_TRUE(AC::ACMessageDecoder::DecodeXMLString(U(text), copy));
    EXPECT_EQ(*copy.assetMediaInfoList.front()->GetXMPString(), "<x a='&#xD;'>\n\nb\n</x>");
    EXPECT_EQ(copy.errorInfo, u"\r");
}

}  // namespace
