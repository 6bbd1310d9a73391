#include "recorder/Masking.h"

#include "assetconnector/codec/Vocabulary.h"
#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/message/MessageConstants.h"
#include "recorder/MaskedOrder.h"
#include "session/format/Passwords.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <random>
#include <utility>
#include <vector>

namespace Recording {
namespace {

using Session::OrderedJson;

/// Texts that are no names but mean something to the library or come from it.
constexpr const char* kFixedWords[] = {"true", "false", "masterClip", "subClip", "roughCut", "rcSubClip",
                                       "unKnown", "Copy", "NoCopy", "Verify", "NoVerify", "MD5", "Overwrite",
                                       "ftp", "panel",
                                       // Syntax of XML.
                                       "amp", "lt", "gt", "quot", "apos", "CDATA", "DOCTYPE", "ENTITY",
                                       "SYSTEM", "PUBLIC", "xml", "version", "encoding", "standalone", "UTF",
                                       // Members of records, where a host writes a block as text.
                                       "namespaces", "properties"};

const UTF16String* const kConstants[] = {&AC::kACMessage_ResultOK,
                                         &AC::kACMessage_ResultFailure,
                                         &AC::kACMessage_ResultIgnore,
                                         &AC::kACMessage_ResultUserCanceled,
                                         &AC::kACMessage_ResultAccessDenied,
                                         &AC::kACMessage_ResultDirty,
                                         &AC::kACMessage_ResultUndirty,
                                         &AC::kACMessage_TypeInfo,
                                         &AC::kACMessage_TypeWarn,
                                         &AC::kMessageRoot,
                                         &AC::kNotificationRoot,
                                         &AC::kNativeBrowserID};

constexpr std::u16string_view kNames[] = {
#define AC_NAME(CONSTANT, TEXT) TEXT,
#include "assetconnector/codec/Vocabulary.def"
#undef AC_NAME
};

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsOfWord(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80U;
}

/// \return How many bytes there are no part of a word. What stands for characters that texts cannot carry
/// takes
///         three: in one text it is what it was, in another U+FFFD.
std::size_t LengthOfGap(std::string_view text, std::size_t at)
{
    constexpr std::string_view kBegin = "\xEF\xBF";
    if (text.compare(at, kBegin.size(), kBegin) == 0 && at + kBegin.size() < text.size() &&
        static_cast<unsigned char>(text[at + kBegin.size()]) >= 0xBDU)
        return kBegin.size() + 1;
    return IsOfWord(text[at]) ? 0 : 1;
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

/// \return Whether a GUID begins there.
bool IsGuidAt(std::string_view text, std::size_t at)
{
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    if (text.size() - at < kForm.size())
        return false;
    for (std::size_t i = 0; i < kForm.size(); ++i)
        if (kForm[i] == 'x' ? !IsHexDigit(text[at + i]) : text[at + i] != kForm[i])
            return false;
    return at + kForm.size() == text.size() || !IsOfWord(text[at + kForm.size()]);
}

/// \return Whether the word is a number, in hexadecimal too, or a rate: "25", "0x80000000", "f30000s1001".
bool IsNumber(std::string_view word)
{
    if (word.size() > 2 && word[0] == '0' && word[1] == 'x')
        return std::all_of(word.begin() + 2, word.end(), IsHexDigit);
    if (word[0] == 'f' || word[0] == 's')
        word.remove_prefix(1);
    std::size_t separators = 0;
    return !word.empty() && std::all_of(word.begin(), word.end(), [&separators](char c) {
        return IsDigit(c) || ((c == 's' || c == 'f') && ++separators == 1);
    });
}

/// \return Whether the word there is the inside of a reference to a character, "xFC" of "&#xFC;". Such a text
/// may
///         mean itself, or a character in another layer of the encoding: it stays.
bool IsReference(std::string_view text, std::size_t begin, std::size_t end)
{
    if (begin == 0 || text[begin - 1] != '#' || end == text.size() || text[end] != ';')
        return false;
    const bool isHex = text[begin] == 'x';
    const std::string_view digits = text.substr(begin + (isHex ? 1 : 0), end - begin - (isHex ? 1 : 0));
    return !digits.empty() && std::all_of(digits.begin(), digits.end(), isHex ? IsHexDigit : IsDigit);
}

/// \return The letter to which the reference there refers, UTF-8; empty for anything else.
std::string LetterAt(std::string_view reference)
{
    const bool isHex = reference.substr(0, 3) == "&#x";
    const char* const end = reference.data() + reference.size();
    std::uint32_t code = 0;
    const auto read = std::from_chars(reference.data() + (isHex ? 3 : 2), end, code, isHex ? 16 : 10);
    if (read.ec != std::errc() || read.ptr == end || *read.ptr != ';' || code > 0x10FFFFU ||
        (code < 0x80U && !IsOfWord(static_cast<char>(code))))
        return {};
    UTF16String letter;
    if (code >= 0x10000U)
        letter.push_back(static_cast<char16_t>(0xD7C0U + (code >> 10U)));
    letter.push_back(static_cast<char16_t>(code >= 0x10000U ? 0xDC00U | (code & 0x3FFU) : code));
    return ferrite::utility::UTF16to8(letter);
}

/// Letters that a request writes as references, such as "&#233;", are parts of words.
std::string WithoutReferencesToLetters(std::string_view xml)
{
    constexpr std::string_view kCdataEnd = "]]>";
    std::string plain;
    for (std::size_t at = 0; at < xml.size();) {
        std::size_t next = std::min({xml.find("&#", at), xml.find("<![CDATA[", at), xml.size()});
        plain += xml.substr(at, next - at);
        at = next;
        if (at == xml.size())
            break;
        if (xml[at] == '<') {
            next = std::min(xml.find(kCdataEnd, at), xml.size() - 1) + 1;
            plain += xml.substr(at, next - at);
            at = next;
            continue;
        }
        const std::string letter = LetterAt(xml.substr(at));
        next = letter.empty() ? at + 1 : xml.find(';', at) + 1;
        plain += letter.empty() ? "&" : letter;
        at = next;
    }
    return plain;
}

/// \return Whether the operation's arguments are names of the library's own.
bool NamesConstants(std::string_view operation)
{
    return operation == "Kiln::StationUtils::AddListener" ||
           operation == "PlexaManager::AddTandemEventListener" ||
           operation == "PlexaManager::RemoveTandemEventListener";
}

/// Calls visit for every text in the value, innermost members by their names. Does not recurse.
template <class Visit>
void ForEachValue(OrderedJson& root, Visit visit)
{
    std::vector<std::pair<std::string, OrderedJson*>> pending{{"", &root}};
    while (!pending.empty()) {
        auto [name, json] = std::move(pending.back());
        pending.pop_back();
        visit(name, *json);
        if (!json->is_structured())
            continue;
        const bool isObject = json->is_object();
        for (auto& [key, value] : json->items())
            pending.emplace_back(isObject ? key : std::string(), &value);
    }
}

}  // namespace

Masking::Masking(bool contents)
    : mContents(contents), mKey(std::uint64_t{std::random_device()()} << 32U | std::random_device()())
{
    if (!contents)
        return;
    for (const char* const word : kFixedWords)
        mKept.insert(LowerCase(word));
    for (const UTF16String* const constant : kConstants)
        mKept.insert(LowerCase(ferrite::utility::UTF16to8(*constant)));
    for (const std::u16string_view name : kNames)
        mKept.insert(LowerCase(ferrite::utility::UTF16to8(name)));
}

std::string Masking::Masked(std::string lines)
{
    if (!mContents && !Session::MayMentionPassword(lines))
        return lines;
    std::string masked;
    std::string_view rest = lines;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
        masked += MaskedLine(rest.substr(0, end));
        masked += '\n';
        rest.remove_prefix(end + 1);
    }
    return masked;
}

std::string Masking::MaskedLine(std::string_view line)
{
    const std::size_t begin = line.find('{');
    if (begin == std::string_view::npos || (!mContents && !Session::MayMentionPassword(line)))
        return std::string(line);
    OrderedJson json = OrderedJson::parse(line.substr(begin));
    if (json.contains("hostCall") && NamesConstants(json["hostCall"].get_ref<const std::string&>()))
        return std::string(line);
    const bool isRequest = !json.contains("notification");
    for (auto& [name, value] : json.items())
        MaskMember(name, value, isRequest);
    return std::string(line.substr(0, begin)) + Session::DumpJson(json);
}

void Masking::MaskMember(const std::string& name, OrderedJson& value, bool isRequest)
{
    if (name == "host") {
        MaskHost(value);
    } else if (name == "data") {
        value = MaskedXML(value.get<std::string>(), isRequest);
    } else if (name == "args" || name == "payload") {
        MaskValue(value);
    } else if (name == "exception") {
        if (mThrown.count(value.get_ref<const std::string&>()) != 0)
            MaskValue(value);
        else  // what the library throws is no secret, and a replay throws it, too
            value = Session::WithoutPassword(value.get<std::string>());
    }
}

void Masking::MaskHost(OrderedJson& host)
{
    for (auto& [key, value] : host.items()) {
        if (key == "browserID") {
            MaskValue(value);
        } else if (key == "throwsAt") {
            mThrown.clear();
            for (OrderedJson& each : value) {
                mThrown.insert(each[2].get<std::string>());
                MaskValue(each[2]);
            }
        } else if (key == "answers") {
            for (OrderedJson& each : value) {
                if (each[0] != "ferrite::config::Localizer::Lookup")  // the library asks for its own keys
                    MaskValue(each[1]);
                MaskValue(each[2]);
            }
        }
    }
}

void Masking::MaskValue(OrderedJson& value)
{
    std::unordered_set<const OrderedJson*> names;  // as elements have them
    ForEachValue(value, [this, &names](const std::string& name, OrderedJson& each) {
        if (name == "properties")
            for (const OrderedJson* const property : MaskProperties(each))
                names.insert(property);
        if (!each.is_string())
            return;
        auto& text = each.get_ref<std::string&>();
        if (name != "ftpPassword" && names.count(&each) == 0)
            text = Session::WithoutPassword(std::move(text));
        if (mContents)
            text = MaskedWords(text);
    });
    if (mContents)
        ForEachValue(value, [](const std::string& name, OrderedJson& each) { SortTexts(name, each); });
}

std::vector<OrderedJson*> Masking::MaskProperties(OrderedJson& properties)
{
    std::vector<OrderedJson*> names;
    for (OrderedJson& each : properties) {
        if (!each.is_array() || each.size() != 2 || !each[0].is_string() || !each[1].is_string())
            continue;
        const auto& name = each[0].get_ref<const std::string&>();
        if (!Session::MentionsPassword(name))
            continue;
        if (!each[1].get_ref<const std::string&>().empty())
            each[1] = "***";
        if (std::all_of(name.begin(), name.end(), IsOfWord))
            names.push_back(&each[0]);
    }
    return names;
}

void Masking::SortTexts(const std::string& name, OrderedJson& value)
{
    if ((name != "properties" && name != "keywords") || !value.is_array())
        return;
    std::sort(value.begin(), value.end(), [](const OrderedJson& a, const OrderedJson& b) {
        const auto& first = a.is_array() ? a.front() : a;
        const auto& second = b.is_array() ? b.front() : b;
        return first.get_ref<const std::string&>() < second.get_ref<const std::string&>();
    });
}

std::string Masking::MaskedXML(std::string xml, bool isRequest)
{
    xml = Session::PasswordsMaskedInXML(std::move(xml));
    if (!mContents)
        return xml;
    // The library writes no letters so: where one stands, it is what the text says.
    return InMaskedOrder(MaskedWords(isRequest ? WithoutReferencesToLetters(xml) : xml));
}

std::string Masking::MaskedWords(std::string_view text)
{
    std::string masked;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at + LengthOfGap(text, at);
        const bool isGap = end != at;
        const bool isGuid = !isGap && IsGuidAt(text, at);
        if (isGuid)
            end = at + ferrite::utility::Guid::kTextLength;
        while (!isGap && !isGuid && end < text.size() && LengthOfGap(text, end) == 0)
            ++end;
        const std::string_view part = text.substr(at, end - at);
        if (isGap || isGuid || IsReference(text, at, end))
            masked += part;
        else
            masked += MaskOf(part);
        at = end;
    }
    return masked;
}

std::string Masking::MaskOf(std::string_view word) const
{
    if (IsNumber(word) || mKept.count(LowerCase(word)) != 0)
        return std::string(word);
    // Numbers are read up to the first letter, and no name begins with one.
    const auto digits = std::find_if_not(word.begin(), word.end(), IsDigit);
    std::uint64_t hash = mKey;
    for (const char c : word)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x9E3779B97F4A7C15U ^ hash >> 31U;
    char text[13];
    const auto end = std::to_chars(std::begin(text), std::end(text), hash >> 12U, 36).ptr;
    return std::string(word.begin(), digits) + 'w' + std::string(text, end);
}

}  // namespace Recording
