#include "conformance/Report.h"

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <sstream>

namespace {

using Conformance::Outcome;

/// One of each outcome, with what every form must escape.
Conformance::Report SmallReport()
{
    return {{
        {"stations.order", "In order.", "Disorder.", Outcome::kPassed, {}, "", 0.0125},
        {"files.file",
         "A file & \"more\".",
         "C:\\ is <gone>.",
         Outcome::kFailed,
         {{"a file", "true", "\"a\nb\x01\x7F\""}, {"another # one", "1", "\xC3\xA4\xFF\xEF\xBF\xBF"}},
         "",
         1.5},
        {"own", "Ours.", "Nothing.", Outcome::kNotChecked, {}, "no way # to\nraise <it>", 0},
    }};
}

std::string Written(void (*write)(const Conformance::Report& report, std::ostream& out))
{
    std::ostringstream out;
    write(SmallReport(), out);
    return out.str();
}

TEST(Report, IsATextForPeople)
{
    EXPECT_EQ(Written(Conformance::WriteText),
              "passed       stations.order\n"
              "FAILED       files.file\n"
              "  must hold:     A file & \"more\".\n"
              "  in production: C:\\ is <gone>.\n"
              "  - a file: expected true, got \"a\nb\x01\x7F\"\n"
              "  - another # one: expected 1, got \xC3\xA4\xFF\xEF\xBF\xBF\n"
              "not checked  own: no way # to\nraise <it>\n"
              "3 checks: 1 passed, 1 failed, 1 not checked\n");
}

TEST(Report, IsTAP)
{
    EXPECT_EQ(Written(Conformance::WriteTAP),
              "TAP version 13\n"
              "1..3\n"
              "ok 1 - stations.order\n"
              "not ok 2 - files.file\n"
              "  ---\n"
              "  about: \"A file & \\\"more\\\".\"\n"
              "  consequence: \"C:\\\\ is <gone>.\"\n"
              "  failures:\n"
              "    - what: \"a file\"\n"
              "      expected: \"true\"\n"
              "      actual: \"\\\"a\\nb\\u0001\\u007F\\\"\"\n"
              "    - what: \"another # one\"\n"
              "      expected: \"1\"\n"
              "      actual: \"\xC3\xA4\xEF\xBF\xBD\\uFFFF\"\n"
              "  ...\n"
              "ok 3 - own # SKIP no way \\# to raise <it>\n");
}

TEST(Report, IsWellFormedJUnit)
{
    const std::string text = Written(Conformance::WriteJUnit);
    EXPECT_EQ(text,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<testsuites>\n"
              "  <testsuite name=\"conformance\" tests=\"3\" failures=\"1\" errors=\"0\" skipped=\"1\" "
              "time=\"1.512\">\n"
              "    <testcase classname=\"stations\" name=\"order\" time=\"0.013\"/>\n"
              "    <testcase classname=\"files\" name=\"file\" time=\"1.500\">\n"
              "      <failure message=\"A file &amp; &quot;more&quot;.\">"
              "a file: expected true, got &quot;a&#10;b\xEF\xBF\xBD\x7F&quot;&#10;"
              "another # one: expected 1, got \xC3\xA4\xEF\xBF\xBD\xEF\xBF\xBD&#10;"
              "In production: C:\\ is &lt;gone&gt;.</failure>\n"
              "    </testcase>\n"
              "    <testcase classname=\"own\" name=\"own\" time=\"0.000\">\n"
              "      <skipped message=\"no way # to&#10;raise &lt;it&gt;\"/>\n"
              "    </testcase>\n"
              "  </testsuite>\n"
              "</testsuites>\n");
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                            "report");
    xercesc::XercesDOMParser parser;
    parser.parse(source);
    EXPECT_EQ(parser.getErrorCount(), 0U);
}

}  // namespace
