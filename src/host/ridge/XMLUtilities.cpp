#include "host/ridge/XMLUtilities.h"

#include "host/ferrite/ReplacementTable.h"
#include "host/ferrite/TextBuilder.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace Ridge::XMLUtilities {
namespace {

using ferrite::utility::ReplacementTable;
using ferrite::utility::TextBuilder;
using xercesc::DOMNode;

constexpr char16_t kReplacementCharacter = 0xFFFD;

/// \return What is written for each character.
constexpr ReplacementTable MakeReplacements(bool inAttribute)
{
    ReplacementTable table;
    for (std::size_t control = 0; control < 0x20; ++control)
        table.Set(control, {&kReplacementCharacter, 1});
    table.Set(u'\t', inAttribute ? u"&#x9;" : u"\t");
    table.Set(u'\n', inAttribute ? u"&#xA;" : u"\n");
    table.Set(u'\r', u"&#xD;");
    table.Set(u'&', u"&amp;");
    table.Set(u'<', u"&lt;");
    if (inAttribute)
        table.Set(u'"', u"&quot;");
    else
        table.Set(u'>', u"&gt;");
    return table;
}

constexpr ReplacementTable kInText = MakeReplacements(false);
constexpr ReplacementTable kInAttribute = MakeReplacements(true);

/// \param unit Beyond ASCII.
/// \return The unit, or U+FFFD where XML 1.0 cannot carry it: surrogates must come in pairs.
char16_t Carried(char16_t previous, char16_t unit, char16_t next)
{
    bool isCarried = unit < 0xFFFE;
    if (unit >= 0xD800 && unit <= 0xDBFF)
        isCarried = (next & 0xFC00U) == 0xDC00U;
    else if (unit >= 0xDC00 && unit <= 0xDFFF)
        isCarried = (previous & 0xFC00U) == 0xD800U;
    return isCarried ? unit : kReplacementCharacter;
}

/// \param value Of a node, which a zero follows.
void PutEscaped(TextBuilder& out, std::u16string_view value, const ReplacementTable& table)
{
    constexpr std::size_t kBlock = 64;
    char16_t previous = 0;
    while (!value.empty()) {
        const std::u16string_view block = value.substr(0, kBlock);
        value.remove_prefix(block.size());
        char16_t* to = out.Room(kBlock * ReplacementTable::kRoom);
        for (const char16_t* at = block.data(); at != block.data() + block.size(); ++at) {
            if (ReplacementTable::Has(*at))
                to = table.Write(*at, to);
            else
                *to++ = Carried(previous, at[0], at[1]);
            previous = *at;
        }
        out.Fill(to);
    }
}

bool IsText(const DOMNode* node)
{
    const DOMNode::NodeType type = node->getNodeType();
    return type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE;
}

/// \param node One that IsText.
std::u16string_view DataOf(const DOMNode* node)
{
    const auto* const text = static_cast<const xercesc::DOMCharacterData*>(node);
    return {text->getData(), text->getLength()};
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
            if (IsText(text))
                PutEscaped(out, DataOf(text), kInAttribute);
        out.Put(u'"');
    }
}

/// \return Whether there is nothing to write between the tags.
bool IsEmpty(const DOMNode* firstChild)
{
    for (const DOMNode* child = firstChild; child != nullptr; child = child->getNextSibling())
        if (!IsText(child) || !DataOf(child).empty())
            return false;
    return true;
}

/// Writes what stands before the node's children. \return The first child to go on with, or null.
const DOMNode* Open(TextBuilder& out, const DOMNode* node)
{
    if (IsText(node)) {
        PutEscaped(out, DataOf(node), kInText);
    } else if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
        out.Put(u'<');
        out.Put(node->getNodeName());
        PutAttributes(out, node);
        const DOMNode* const child = node->getFirstChild();
        if (!IsEmpty(child)) {
            out.Put(u'>');
            return child;
        }
        out.Put(u"/>");
    }
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
