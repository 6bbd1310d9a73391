// What descriptions of records say about texts, against the texts.

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "session/ValueReader.h"
#include "tests/support/HostTest.h"
#include "tests/support/MemberWalk.h"
#include "tests/support/TextFile.h"

#include <filesystem>
#include <map>
#include <set>

namespace {

using AC::ACMessage;
using AC::Description::Carried;

ACMessage Everything()
{
    return Session::ValueReader::Read<ACMessage>(
        Session::ParseJson(TextOf(TEST_DATA "/records/everything.json")));
}

using DescriptionTest = HostTest;

/// Each member in turn is put back to its construction value.
TEST_F(DescriptionTest, SaysWhatNotificationsCarry)
{
    const ACMessage everything = Everything();
    const std::string text = AC::ACMessageEncoder::EncodeUTF8(everything, AC::kNotificationRoot);
    struct Member
    {
        Carried carried = Carried::kNeither;
        bool isSet = false;
        bool isWritten = false;
    };
    std::map<std::string, Member> members;
    for (std::size_t at = 0, count = 1; at < count; ++at) {
        ACMessage changed = everything;
        Member* member = nullptr;
        count = 0;
        MemberWalk(changed, [&](const auto& name, Carried carried, auto& value, const auto& constructed) {
            if (count++ != at)
                return;
            member = &members[name];
            member->carried = carried;
            member->isSet = member->isSet || !AC::Comparison::Same(value, constructed);
            value = constructed;
        });
        if (member != nullptr && AC::ACMessageEncoder::EncodeUTF8(changed, AC::kNotificationRoot) != text)
            member->isWritten = true;
    }
    for (const auto& [name, member] : members) {
        EXPECT_TRUE(member.isSet) << name << " is missing in everything.json";
        EXPECT_EQ(member.isWritten, (member.carried & Carried::kOut) != Carried::kNeither) << name;
    }
}

/// A used record keeps what a text does not say, but for those whose absence says something.
TEST_F(DescriptionTest, SomeMembersAreResetByEveryText)
{
    ACMessage message = Everything();
    message.mediaUseLocalFile = message.roughCutUseLocalFile = message.deleteOnDisk = message.allowExit = -1;
    const ACMessage before = message;
    ASSERT_TRUE(AC::ACMessageDecoder::DecodeXMLString(u"<a/>", message));
    std::set<std::string> reset;
    AC::Description::ForEachMember<ACMessage>([&](const auto& row) {
        if (!AC::Comparison::Same(before.*row.member, message.*row.member))
            reset.insert(row.name);
    });
    EXPECT_EQ(reset, (std::set<std::string>{"mediaUseLocalFile", "roughCutUseLocalFile", "deleteOnDisk",
                                            "allowExit", "transferType", "outputXMP", "errorInfo",
                                            "fileContent", "result", "presetPath", "outputFileName"}));
}

TEST_F(DescriptionTest, SaysWhatRequestsCarry)
{
    struct Member
    {
        Carried carried = Carried::kNeither;
        bool isRead = false;
    };
    std::map<std::string, Member> members;
    for (const auto& file : std::filesystem::directory_iterator(TEST_DATA "/texts")) {
        ACMessage message;
        if (file.path().extension() != ".xml")
            continue;
        ASSERT_TRUE(AC::ACMessageDecoder::DecodeXMLString(U(TextOf(file.path())), message)) << file.path();
        MemberWalk(message, [&](const auto& name, Carried carried, auto& value, const auto& constructed) {
            Member& member = members[name];
            member.carried = carried;
            member.isRead = member.isRead || !AC::Comparison::Same(value, constructed);
        });
    }
    for (const auto& [name, member] : members)
        EXPECT_EQ(member.isRead, (member.carried & Carried::kIn) != Carried::kNeither)
            << name << ": not read, or in none of tests/texts";
}

}  // namespace
