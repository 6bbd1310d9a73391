#include "protocol/check/ValueRules.h"

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "protocol/check/NumberRules.h"

#include <algorithm>

namespace Protocol::Checking {
namespace {

constexpr std::string_view kSectionBegin = "<![CDATA[";
constexpr std::string_view kSectionEnd = "]]>";
constexpr std::string_view kClipType = "clipType";

/// \return The text without the marks of the document that it comes from.
std::string Plain(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '`'), text.end());
    return text;
}

std::string WordList(const Form& form)
{
    std::string list;
    for (const std::string& word : form.words)
        list += (list.empty() ? "" : word == form.words.back() ? " or " : ", ") + word;
    return list;
}

/// \return What becomes of a word that does not count, and why it does not.
std::string Because(const Form& form, const std::string& reason)
{
    if (form.name == kClipType)
        return ", which reads as no clip type: " + reason;
    return ", and " + reason + " (" + Plain(form.about) + ')';
}

/// Of two words the second is what anything else counts as, so it may be written in any way.
bool IsWhatElseCounts(const Form& form, std::string_view word)
{
    return form.words.size() == 2 && form.words.back() == word;
}

/// \return The word that was meant, but for blanks and capitals; empty for another.
std::string WordMeant(const Form& form, const std::string& trimmed)
{
    for (const std::string& word : form.words)
        if (EqualsFolded(word, trimmed))
            return word;
    return {};
}

bool IsBlankButNotMissing(const Place& place, const std::string& value)
{
    return IsBlank(value) && place.missing != place.malformed;
}

std::optional<Remark> JudgeWord(const Form& form, const Place& place, const std::string& what,
                                const std::string& value)
{
    const std::string trimmed = Trimmed(value);
    if (trimmed.empty() && !IsBlankButNotMissing(place, value))
        return std::nullopt;
    const std::string word = WordMeant(form, trimmed);
    if (!word.empty()) {
        if (value == word || IsWhatElseCounts(form, word) || (form.anyCase && trimmed == value))
            return std::nullopt;
        return trimmed == word || form.anyCase
                   ? Remark{Kind::kBlanks, what + Because(form, "blanks count here"),
                            "write " + word + " alone"}
                   : Remark{Kind::kCapitals, what + Because(form, "capitals count here"), "write " + word};
    }
    // A single word says yes, and many say no.
    if (form.words.size() == 1 && !IsNear(trimmed, form.words.front()))
        return std::nullopt;
    const std::vector<std::string_view> words(form.words.begin(), form.words.end());
    const std::string nearest(Nearest(words, trimmed));
    return Remark{form.name == kClipType ? Kind::kNoClipType : Kind::kUnknownWord,
                  what + Because(form, "it is none of the words"),
                  "write " + (nearest.empty() ? WordList(form) : nearest)};
}

/// \return Whether it is the text of a GUID, all zeros or not.
bool IsGuid(std::string text)
{
    const std::size_t digit = text.find_first_not_of("{-");
    if (digit != std::string::npos && text[digit] == '0')
        text[digit] = '1';
    return !ferrite::utility::Guid::StringToGUID(ferrite::utility::UTF8to16(text)).IsZero();
}

std::optional<Remark> JudgeGuid(const Place& place, const std::string& what, const std::string& value)
{
    if (IsGuid(value))
        return std::nullopt;
    // Of items that are nothing without it the list is empty.
    const bool isLeftOut = place.malformed == Json::array();
    return Remark{Kind::kGuidIsZero,
                  what + ", which reads as no GUID" + (isLeftOut ? ", so that the item is left out" : ""),
                  IsGuid(Trimmed(value)) ? "write it without blanks" : "write 36 characters with hyphens"};
}

std::optional<Remark> JudgeMetadata(const std::string& subject, const std::string& value)
{
    if (value.find('<') == std::string::npos)
        return std::nullopt;
    return Remark{Kind::kEncodedOnce,
                  subject + " is encoded once: the host decodes it twice, and references in it are lost",
                  "encode it once more: &amp;lt; for <"};
}

std::optional<Remark> JudgePacket(const std::string& subject, const std::string& value, bool isInSection)
{
    if (IsBlank(value))
        return std::nullopt;
    const std::size_t begin = value.find(kSectionBegin);
    const std::size_t end = value.rfind(kSectionEnd);
    const bool hasMarkers =
        begin != std::string::npos && end != std::string::npos && end >= begin + kSectionBegin.size();
    if (!hasMarkers)
        return isInSection
                   ? std::nullopt
                   : std::optional(Remark{Kind::kNoMarkers,
                                          subject + " lacks its markers: a packet with such in it is cut",
                                          "write it between &lt;![CDATA[ and ]]&gt;"});
    if (IsBlank(value.substr(0, begin)) && IsBlank(value.substr(end + kSectionEnd.size())))
        return std::nullopt;
    return Remark{Kind::kNoMarkers, "what stands around the markers in " + subject + " is lost",
                  "begin it with &lt;![CDATA[ and end it with ]]&gt;"};
}

/// Looks for passwords but in the element that is there for them.
std::optional<Remark> JudgePassword(const Context& context, const Slot& slot, const Place& place,
                                    const std::string& subject, const std::string& value)
{
    if (IsAddressWithPassword(value))
        return Remark{Kind::kPasswordSeen,
                      subject + " holds an address with a password, which people will see",
                      "give user and password in <ftpSetting>"};
    const bool isForPasswords =
        std::any_of(slot.attributes.begin(), slot.attributes.end(),
                    [](const Place* each) { return IsPasswordName(AttributeOf(each->path)); });
    if (place.form == "text" && !isForPasswords && context.quoting.HoldsPassword(value))
        return Remark{Kind::kPasswordSeen,
                      subject + " holds the password of this text, which people will see", "leave it out"};
    return std::nullopt;
}

/// The text of an element that is not read from it.
Remark JudgeStrayText(const Context& context, const Slot& slot, const Element& element)
{
    const std::string what = "the text in " + context.quoting.Tag(element.name) + " is not read";
    if (slot.attributes.empty() || !slot.content->children.empty() || slot.anyChild != nullptr)
        return {Kind::kStrayText, what, "write it where a value belongs, or leave it out"};
    const std::string name(AttributeOf(slot.attributes.front()->path));
    if (FindAttribute(element, name) != nullptr)
        return {Kind::kStrayText, what + ": the value is the attribute \"" + name + '"', "leave it out"};
    return {Kind::kTextForAttribute, what + ": the value is the attribute \"" + name + '"',
            "write <" + element.name + ' ' + name + "=\"...\"/>"};
}

/// Elements where a text is meant. \return Nothing where they may be looked at by their names.
std::optional<Remark> JudgeMarkup(const Slot& slot, const std::string& tag, bool hasText, bool hasLostText)
{
    if (slot.place->form == "xml")
        return Remark{Kind::kEncodedOnce, tag + " holds elements, which are not read: it is a text",
                      "encode them twice: &amp;lt; for <"};
    if (slot.place->form == "xmp")
        return Remark{Kind::kNoMarkers, tag + " holds elements, which are not read: it is a text",
                      "write &lt;![CDATA[, the packet with &lt; for <, and ]]&gt;"};
    if (!hasText && hasLostText)
        return Remark{Kind::kElementBeforeText,
                      "the text in " + tag + " is lost: an element stands before it",
                      "leave the element out"};
    return std::nullopt;
}

/// \param subject What carries the value, as findings call it.
std::optional<Remark> JudgeForm(const Context& context, const Place& place, const std::string& subject,
                                const std::string& value)
{
    const Form* const form = FindForm(context.model, place.form);
    if (form == nullptr || (value.empty() && form->name != "order"))
        return std::nullopt;
    const std::string what = subject + " is " + context.quoting.Value(value);
    if (!form->words.empty())
        return JudgeWord(*form, place, what, value);
    if (form->name == "guid")
        return JudgeGuid(place, what, value);
    if (form->name == "rate")
        return JudgeRate(context.quoting, what, value);
    if (form->name == "xml")
        return JudgeMetadata(subject, value);
    return JudgeNumber(context.quoting, form->name, what, value);
}

void CheckValue(Context& context, std::size_t element, const Place& place, const std::string& subject,
                const std::string& value)
{
    std::optional<Remark> remark = place.form == "xmp"
                                       ? JudgePacket(subject, value, context.At(element).isSection)
                                       : JudgeForm(context, place, subject, value);
    if (!remark)
        remark = JudgePassword(context, *context.slots[element], place, subject, value);
    const std::string attribute(AttributeOf(place.path));
    if (remark)
        context.Add(element, *remark, attribute.empty() ? attribute : '@' + attribute);
}

}  // namespace

bool CheckText(Context& context, std::size_t element)
{
    const Slot& slot = *context.slots[element];
    const Element& node = context.At(element);
    const std::string tag = context.quoting.Tag(node.name);
    const bool hasText = node.value && !IsBlank(*node.value);
    if (!slot.HoldsText()) {
        if (hasText || node.hasLostText)
            context.Add(element, JudgeStrayText(context, slot, node));
        return true;
    }
    if (!node.children.empty()) {
        if (std::optional<Remark> remark = JudgeMarkup(slot, tag, hasText, node.hasLostText)) {
            context.Add(element, *remark);
            return false;
        }
    } else if (node.hasLostText) {
        context.Add(element,
                    {Kind::kSectionBesideText,
                     "only the first piece of " + tag + " is read: a CDATA section is a piece of its own",
                     "write all of it as text, or all of it as one section"});
        return false;
    }
    if (node.value)
        CheckValue(context, element, *slot.place, tag, *node.value);
    return true;
}

void CheckAttributeValues(Context& context, std::size_t element)
{
    const Element& node = context.At(element);
    for (const Place* place : context.slots[element]->attributes) {
        const std::string name(AttributeOf(place->path));
        if (const std::string* const value = FindAttribute(node, name))
            CheckValue(context, element, *place, '"' + name + "\" of " + context.quoting.Tag(node.name),
                       *value);
    }
}

}  // namespace Protocol::Checking
