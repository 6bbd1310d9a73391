#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/ferrite/DecimalNumbers.h"
#include "assetconnector/host/ferrite/ReservedCharacters.h"
#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/loft/Utilities.h"
#include "tests/support/HostTest.h"

#include <cmath>
#include <limits>

namespace {

using ferrite::utility::Guid;
using tempora::FrameRate;
using tempora::TickTime;

constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
constexpr auto kMin = std::numeric_limits<std::int64_t>::min();

TEST(Unicode, ReplacesWhatIsNotWellFormed)
{
    struct
    {
        const char* utf8;
        std::u16string_view utf16;
    } const rows[] = {
        {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", u"aé€😀"},
        {"\xC0\x80", u"\uFFFD\uFFFD"},                      // overlong
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
        {"\xE2\x82", u"\uFFFD\uFFFD"},                      // cut off
        {"\xE2\x82z", u"\uFFFD\uFFFDz"},
        {"\xF0\x9F\x98\x80\xFF", u"😀\uFFFD"},
    };
    EXPECT_EQ(ferrite::utility::UTF8to16(std::string_view("\xC3\xA9", 1)), u"\uFFFD") << "ends before";
    for (const auto& row : rows)
        EXPECT_EQ(ferrite::utility::UTF8to16(row.utf8), row.utf16) << row.utf8;
    const UTF16String lone{u'a', 0xD800, u'b', 0xDC00, 0xD83D, 0xDE00, 0xDBFF};
    EXPECT_EQ(ferrite::utility::UTF16to8(lone),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD");
    for (const std::size_t length : {254U, 255U, 256U, 511U}) {  // around what is converted at a time
        const std::string narrow = std::string(length, 'a') + "\xF0\x9F\x98\x80";
        const UTF16String wide = UTF16String(length, u'a') + u"😀";
        EXPECT_EQ(ferrite::utility::UTF16to8(wide), narrow);
        EXPECT_EQ(ferrite::utility::UTF8to16(narrow), wide);
    }
}

TEST(Unicode, TakesEverySecondByteThatMakesACharacter)
{
    for (unsigned first = 0x80; first < 0xF8; ++first)
        for (unsigned second = 0; second <= 0xFF; ++second) {
            const unsigned size = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
            const unsigned value = (((first & (0x7FU >> size)) << 6U) | (second & 0x3FU)) << (6 * (size - 2));
            const unsigned lowest[] = {0x80, 0x800, 0x10000};
            const bool isCharacter = first >= 0xC0 && (second & 0xC0U) == 0x80 && value >= lowest[size - 2] &&
                                     value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
            const char text[] = {static_cast<char>(first), static_cast<char>(second), '\x80', '\x80'};
            const UTF16String wide = ferrite::utility::UTF8to16({text, size});
            EXPECT_EQ(wide.find(u'\uFFFD') == UTF16String::npos, isCharacter) << first << ' ' << second;
        }
}

TEST(Guid, ReadsItsFormsAndNothingElse)
{
    const Guid guid(0x0123456789abcdef, 0xfedcba9876543210);
    EXPECT_EQ(guid.AsString(), u"01234567-89ab-cdef-fedc-ba9876543210");
    EXPECT_EQ(Guid().AsString(), u"00000000-0000-0000-0000-000000000000");
    for (const char* text :
         {"01234567-89ab-cdef-fedc-ba9876543210", "{01234567-89AB-CDEF-FEDC-BA9876543210}"})
        EXPECT_EQ(Guid::StringToGUID(U(text)), guid) << text;
    for (const char* text :
         {"", "01234567-89ab-cdef-fedc-ba987654321", "01234567-89ab-cdef-fedc-ba98765432100",
          "01234567089ab-cdef-fedc-ba9876543210", "{01234567-89ab-cdef-fedc-ba9876543210",
          "g1234567-89ab-cdef-fedc-ba9876543210", " 01234567-89ab-cdef-fedc-ba987654321"})
        EXPECT_TRUE(Guid::StringToGUID(U(text)).IsZero()) << text;
    EXPECT_LT(Guid(0x8000000000000000, 0), Guid(0, 0)) << "halves are ordered as signed numbers";
    EXPECT_LT(Guid(1, 0x8000000000000000), Guid(1, 1));
}

TEST(DecimalNumbers, HaveAnOutcomeForEveryText)
{
    using namespace ferrite::utility;
    struct
    {
        std::u16string_view text;
        std::int64_t int64;
        std::int32_t int32;
        std::uint32_t uint32;
    } const rows[] = {
        {u"42%", 42, 42, 42},
        {u" \t\r\n\v\f7", 7, 7, 7},
        {u"\u00A07", 0, 0, 0},
        {u"+5", 5, 5, 0},
        {u"-5", -5, -5, 0},
        {u"--5", 0, 0, 0},
        {u"", 0, 0, 0},
        {u"x1", 0, 0, 0},
        {u"2147483647", 2147483647, 2147483647, 2147483647},
        {u"2147483648", 2147483648, 0, 2147483648},
        {u"-2147483648", -2147483648, std::numeric_limits<std::int32_t>::min(), 0},
        {u"4294967296", 4294967296, 0, 0},
        {u"9223372036854775807", kMax, 0, 0},
        {u"9223372036854775808", 0, 0, 0},
        {u"-9223372036854775808", kMin, 0, 0},
        {u"-9223372036854775809", 0, 0, 0},
        {u"99999999999999999999999", 0, 0, 0},
        {u"00000000000000000000012", 12, 12, 12},
    };
    for (const auto& row : rows) {
        const std::string shown = Narrow(UTF16String(row.text));
        EXPECT_EQ(ParseInt64(row.text), row.int64) << shown;
        EXPECT_EQ(ParseInt32(row.text), row.int32) << shown;
        EXPECT_EQ(ParseUInt32(row.text), row.uint32) << shown;
    }
}

TEST(FrameRate, IsReadAsRatioAndWrittenAsOne)
{
    struct
    {
        std::u16string_view text;
        std::int64_t ticksPerFrame;
    } const rows[] = {
        {u"f25", 10160640000},
        {u"f30000s1001", 8475667200},
        {u"f254016000000", 1},
        {u"25", 0},
        {u"", 0},
        {u"s1f25", 0},
        {u"fs", 0},     // 0/0
        {u"f25s0", 0},  // infinitely many
        {u"f0", kMax},
        {u"f", kMax},
        {u"finf", kMax},
        {u"f0x10", kMax},
        {u"f 25x", 10160640000},
        {u"xf25", 10160640000},
        {u"f2.5e1e", 10160640000},
        {u"f.25e+2", 10160640000},
        {u"f250e-1", 10160640000},
        {u"f25e", 10160640000},
        {u"f25e-", 10160640000},
        {u"f+25", 10160640000},
        {u"f-25", -10160640000},
        {u"f1e-300", kMax},
        {u"f-1e-300", kMin},
        {u"f1e400", 0},
        {u"f1e-400", kMax},
        {u"f0.001e99999999999999999999", 0},
        {u"f1e400-", 0},
        {u"f254016000000s9223372036854775808", kMax},  // 2^63 ticks
        {u"f254016000000s-9223372036854775808", kMin},
    };
    for (const auto& row : rows)
        EXPECT_EQ(AC::ParseFrameRate(row.text).ticksPerFrame, row.ticksPerFrame)
            << Narrow(UTF16String(row.text));

    const auto zeros = [](std::size_t count) { return UTF16String(count, u'0'); };
    EXPECT_EQ(AC::ParseFrameRate(u"f1" + zeros(500) + u"e-100").ticksPerFrame, 0) << "beyond every number";
    EXPECT_EQ(AC::ParseFrameRate(u"f1" + zeros(7000) + u"e-10000").ticksPerFrame, kMax) << "nearly 0";
    EXPECT_EQ(AC::ParseFrameRate(u"f0." + zeros(500) + u"1e100").ticksPerFrame, kMax);

    EXPECT_EQ(AC::FormatFrameRate({10160640000}), u"f25");
    EXPECT_EQ(AC::FormatFrameRate({8475667200}), u"f30000s1001");
    EXPECT_EQ(AC::FormatFrameRate({0}), u"");
    EXPECT_EQ(AC::FormatFrameRate({-10160640000}), u"f-25");
    EXPECT_EQ(AC::FormatFrameRate({kMin}), u"f-62015625s2251799813685248") << "lowest terms";
    EXPECT_EQ(AC::FormatFrameRate({1}), AC::kTickRate.Text());
}

TEST(TickTime, NeverTraps)
{
    EXPECT_EQ(TickTime{100}.ToFrame64({7}), 14);
    EXPECT_EQ(TickTime{-100}.ToFrame64({7}), -14) << "toward zero";
    EXPECT_EQ(TickTime{100}.ToFrame64({0}), 100);
    EXPECT_EQ(tempora::kTime_Invalid.ToFrame64({-1}), 0);
    EXPECT_EQ((TickTime{kMin + 1} - TickTime{2}).ticks, kMax) << "low 64 bits";
    EXPECT_EQ(tempora::TimeOfFrames(kMax, {2}).ticks, -2);
}

TEST(ReservedCharacters, ArePassedOnce)
{
    UTF16String text;
    ferrite::xml::utils::EncodeReservedCharacters(u"<a b=\"'&amp;'\">", text);
    EXPECT_EQ(text, u"&lt;a b=&quot;&apos;&amp;amp;&apos;&quot;&gt;");
    ferrite::xml::utils::DecodeReservedCharacters(text, text);
    EXPECT_EQ(text, u"<a b=\"'&amp;'\">");
    ferrite::xml::utils::DecodeReservedCharacters(u"&amp;lt;&#38;&nbsp;&lt&&gt;&", text);
    EXPECT_EQ(text, u"&lt;&#38;&nbsp;&lt&>&");
}

TEST(PathUtils, CutBehindTheLastSeparator)
{
    struct
    {
        const char* path;
        const char* drive;
        const char* folder;
        const char* name;
        const char* extension;
    } const rows[] = {
        {"/media/a.mov", "", "/media/", "a", ".mov"},
        {"D:\\media\\a.mov", "D:", "\\media\\", "a", ".mov"},
        {"a.mov", "", "", "a", ".mov"},
        {"/a.b/c", "", "/a.b/", "c", ""},
        {"\\\\server\\x/y.", "", "\\\\server\\x/", "y", "."},
        {"", "", "", "", ""},
        {"D:/", "D:", "/", "", ""},
    };
    for (const auto& row : rows) {
        UTF16String drive, folder, name, extension;
        Kiln::PathUtils::SplitPath(U(row.path), &drive, &folder, &name, &extension);
        EXPECT_EQ(Narrow(drive + u"|" + folder + u"|" + name + u"|" + extension),
                  std::string(row.drive) + "|" + row.folder + "|" + row.name + "|" + row.extension);
        EXPECT_EQ(Kiln::PathUtils::GetFilePart(U(row.path)), name + extension);
    }
    for (char16_t unit = u'!'; unit < 0x7F; ++unit) {
        UTF16String drive;
        Kiln::PathUtils::SplitPath(UTF16String(1, unit) + u":/a", &drive, nullptr, nullptr, nullptr);
        const bool isLetter = (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
        EXPECT_EQ(drive.empty(), !isLetter) << unit;
    }
}

}  // namespace
