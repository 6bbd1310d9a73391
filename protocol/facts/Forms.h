#pragma once

#include <array>

namespace Protocol {

/// How values are spelled, as far as code cannot tell it. What a form reads as is measured.
struct FormFact
{
    const char* name;
    const char* about;
    const char* words = "";  ///< Separated by blanks.
    bool anyCase = false;
    const char* pattern = "";
    const char* malformed = "";
    const char* writtenPattern = "";
    const char* codes = "";  ///< Of results, hexadecimal: a reader of requests does not tell them all apart.
};

constexpr std::array kFormFacts{
    FormFact{"text", "text as it is, not trimmed"},
    FormFact{"path", "a path of the host's file system, as it is"},
    FormFact{"boolean", "`true` or `false`, exactly; anything but `true` is false", "true false", false,
             "true|false", "True", "true|false"},
    FormFact{"integer", "a decimal number of 32 bits; text behind the digits is ignored, what is larger is 0",
             "", false, R"([ \t\n\r]*[+\-]?[0-9]+[ \t\n\r]*)", "x", "-?[0-9]+"},
    FormFact{
        "unsigned",
        "a decimal number of 32 bits without a sign; text behind the digits is ignored, what is larger is 0",
        "", false, R"([ \t\n\r]*[0-9]+[ \t\n\r]*)", "-1"},
    FormFact{
        "order",
        "a decimal number of 32 bits: items are sorted by it, negative ones behind the others; of several "
        "with the same one the first stays",
        "", false, R"([ \t\n\r]*\+?[0-9]+[ \t\n\r]*)", "", "[1-9][0-9]*"},
    FormFact{"guid", "36 characters with hyphens, either case, braces allowed; written in lower case without",
             "", false,
             "[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}|"
             R"(\{[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}\})",
             "x", "[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}"},
    FormFact{"time",
             "a whole number of frames at the rate in the sibling `frameRate`; its ticks wrap beyond 64 bits",
             "", false, R"([ \t\n\r]*[+\-]?[0-9]+[ \t\n\r]*)", "x", "-?[0-9]+"},
    FormFact{"rate",
             "`f25`; `f30000s1001` for 30000/1001 frames per second, which `f29.97` is not exactly; "
             "`f254016000000` is one tick per frame",
             "", false, R"([ \t\n\r]*f[0-9]+(\.[0-9]+)?(s[0-9]+(\.[0-9]+)?)?[ \t\n\r]*)", "25",
             "f-?[1-9][0-9]*(s[1-9][0-9]*)?"},
    FormFact{"clipType", "one of the four, exactly; the host writes `unKnown` for any other",
             "masterClip subClip roughCut rcSubClip", false, "masterClip|subClip|roughCut|rcSubClip",
             "MasterClip", "masterClip|subClip|roughCut|rcSubClip|unKnown"},
    FormFact{"result", "one of the five, exactly", "OK ERROR Ignore Canceled AccessDenied", false,
             "OK|ERROR|Ignore|Canceled|AccessDenied", "ok", "OK|ERROR|Ignore|Canceled|AccessDenied",
             "0 80000000 A00F000B A00F0007 A00F0005"},
    FormFact{"level", "one of the three, in any case; anything else counts as `INFO`", "INFO WARN ERROR",
             true, "[Ii][Nn][Ff][Oo]|[Ww][Aa][Rr][Nn]|[Ee][Rr][Rr][Oo][Rr]"},
    FormFact{"overwrite", "`Overwrite`, in any case, overwrites; anything else does not", "Overwrite", true,
             "[Oo][Vv][Ee][Rr][Ww][Rr][Ii][Tt][Ee]", "overwrite "},
    FormFact{"transferType", "`ftp`, in any case; anything else is `local`", "ftp local", true,
             "[Ff][Tt][Pp]|[Ll][Oo][Cc][Aa][Ll]", "ftp "},
    FormFact{"copy", "`Copy`, exactly, copies; anything else does not", "Copy NoCopy", false, "Copy|NoCopy"},
    FormFact{"xml", "XML as text, encoded once more: `&lt;tag&gt;` is written `&amp;lt;tag&amp;gt;`"},
    FormFact{"xmp",
             "an XMP packet between `<![CDATA[` and `]]>`, and these markers are text, too: "
             "`&lt;![CDATA[...]]&gt;`"},
};

}  // namespace Protocol
