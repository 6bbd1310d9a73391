#include "host/ridge/XMLUtilities.h"

#include "host/ferrite/TextBuilder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace Ridge::XMLUtilities {
namespace {

using ferrite::utility::TextBuilder;
using xercesc::DOMNode;

/// \return Whether the unit needs no look: neither one that is written as a reference, nor one that XML 1.0
///         may not carry, nor the zero that ends a value.
constexpr bool IsPlain(char16_t unit)
{
    constexpr auto bit = [](char16_t special) { return std::uint64_t{1} << special; };
    constexpr std::uint64_t kControls = 0xFFFFFFFF;
    constexpr std::uint64_t kSpecial = kControls | bit(u'&') | bit(u'<') | bit(u'>') | bit(u'"');
    return unit < 64 ? (kSpecial >> unit & 1U) == 0 : unit < 0xD800;
}

/// \return Whether XML 1.0 can carry the unit, no control character, between its neighbours; surrogates must
///         come in pairs.
bool IsCarried(char16_t previous, char16_t unit, char16_t next)
{
    if (unit < 0xD800)
        return true;
    if (unit <= 0xDBFF)
        return (next & 0xFC00U) == 0xDC00U;
    if (unit <= 0xDFFF)
        return (previous & 0xFC00U) == 0xD800U;
    return unit < 0xFFFE;
}

using Replacements = std::array<std::u16string_view, 64>;

/// \return What to write instead of the first 64 units, or empty views.
constexpr Replacements MakeReplacements(bool inAttribute)
{
    Replacements rows{};
    for (std::size_t control = 0; control < 0x20; ++control)
        rows[control] = u"\uFFFD";
    rows[u'\t'] = inAttribute ? std::u16string_view(u"&#x9;") : std::u16string_view();
    rows[u'\n'] = inAttribute ? std::u16string_view(u"&#xA;") : std::u16string_view();
    rows[u'\r'] = u"&#xD;";
    rows[u'&'] = u"&amp;";
    rows[u'<'] = u"&lt;";
    if (inAttribute)
        rows[u'"'] = u"&quot;";
    else
        rows[u'>'] = u"&gt;";
    return rows;
}

constexpr Replacements kInText = MakeReplacements(false);
constexpr Replacements kInAttribute = MakeReplacements(true);

/// \return What to write for the unit instead of itself, or an empty view.
std::u16string_view Replacement(char16_t previous, char16_t unit, char16_t next, const Replacements& low)
{
    if (unit < low.size())
        return low[unit];
    return IsCarried(previous, unit, next) ? std::u16string_view() : u"\uFFFD";
}

/// \param value Ends with a zero.
void PutEscaped(TextBuilder& out, const XMLCh* value, const Replacements& low)
{
    const XMLCh* done = value;
    const XMLCh* at = value;
    while (true) {
        while (IsPlain(*at))
            ++at;
        const std::u16string_view run(done, static_cast<std::size_t>(at - done));
        if (*at == 0)
            return out.Put(run);
        const char16_t previous = at == value ? u'\0' : at[-1];
        const std::u16string_view replacement = Replacement(previous, at[0], at[1], low);
        ++at;
        if (replacement.empty())
            continue;
        out.Put(run);
        out.Put(replacement);
        done = at;
    }
}

void PutAttributes(TextBuilder& out, const DOMNode* element)
{
    const xercesc::DOMNamedNodeMap* const attributes = element->getAttributes();
    const XMLSize_t count = attributes->getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        const DOMNode* const attribute = attributes->item(i);
        out.Put(u' ');
        out.Put(attribute->getNodeName());
        out.Put(u"=\"");
        // The value of the attribute itself costs a cast.
        for (const DOMNode* text = attribute->getFirstChild(); text != nullptr; text = text->getNextSibling())
            PutEscaped(out, text->getNodeValue(), kInAttribute);
        out.Put(u'"');
    }
}

bool IsText(const DOMNode* node)
{
    return node->getNodeType() == DOMNode::TEXT_NODE || node->getNodeType() == DOMNode::CDATA_SECTION_NODE;
}

/// \return Whether there is nothing to write between the tags.
bool IsEmpty(const DOMNode* element)
{
    for (const DOMNode* child = element->getFirstChild(); child != nullptr; child = child->getNextSibling())
        if (!IsText(child) || *child->getNodeValue() != 0)
            return false;
    return true;
}

/// Writes what stands before the node's children. \return The first child to go on with, or null.
const DOMNode* Open(TextBuilder& out, const DOMNode* node)
{
    if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
        out.Put(u'<');
        out.Put(node->getNodeName());
        PutAttributes(out, node);
        if (IsEmpty(node)) {
            out.Put(u"/>");
            return nullptr;
        }
        out.Put(u'>');
        return node->getFirstChild();
    }
    if (IsText(node))
        PutEscaped(out, node->getNodeValue(), kInText);
    return nullptr;
}

}  // namespace

bool GetDOMDocument(MessageParser& parser, const UTF16String& text, xercesc::DOMDocument*& document)
{
    xercesc::DOMDocument* const parsed = parser.Parse(text);
    if (parsed != nullptr)
        document = parsed;
    return parsed != nullptr;
}

bool GetDOMDocument(MessageParser& parser, const UTF16String& text, xercesc::DOMDocument*& document,
                    ParseError& error)
{
    const bool parsed = GetDOMDocument(parser, text, document);
    if (!parsed)
        error = parser.Error();
    return parsed;
}

xercesc::DOMDocument* CreateDomDocument()
{
    static const XMLCh kCore[] = u"Core";
    return xercesc::DOMImplementationRegistry::getDOMImplementation(kCore)->createDocument();
}

UTF16String ConvertDomToXMLString(const xercesc::DOMDocument* document)
{
    TextBuilder out;
    std::vector<const DOMNode*> open;  // a node's parent costs a cast
    const DOMNode* node = document->getFirstChild();
    while (node != nullptr) {
        if (const DOMNode* const child = Open(out, node)) {
            open.push_back(node);
            node = child;
            continue;
        }
        const DOMNode* next = node->getNextSibling();
        while (next == nullptr && !open.empty()) {
            out.Put(u"</");
            out.Put(open.back()->getNodeName());
            out.Put(u'>');
            next = open.back()->getNextSibling();
            open.pop_back();
        }
        node = next;
    }
    return std::move(out).Take();
}

}  // namespace Ridge::XMLUtilities
