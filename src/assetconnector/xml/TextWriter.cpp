#include "assetconnector/xml/TextWriter.h"

#include "assetconnector/host/ferrite/CodePoints.h"
#include "assetconnector/host/ferrite/ReplacementTable.h"

#include <xercesc/dom/DOM.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace AC {
namespace {

using xercesc::DOMNode;
using Table = ferrite::utility::ReplacementTable<char>;

/// What is written for each character of a text, or of an attribute's value.
constexpr Table TableFor(bool inAttribute, Reserved reserved)
{
    Table table;
    for (std::size_t control = 0; control < 0x20; ++control)
        table.Set(control, "\xEF\xBF\xBD");  // U+FFFD
    table.Set('\t', inAttribute ? "&#x9;" : "\t");
    table.Set('\n', inAttribute ? "&#xA;" : "\n");
    table.Set('\r', "&#xD;");
    if (reserved == Reserved::kBare)
        return table;
    table.Set('&', "&amp;");
    table.Set('<', "&lt;");
    if (inAttribute)
        table.Set('"', "&quot;");
    else
        table.Set('>', "&gt;");
    return table;
}

struct Tables
{
    Table inText;
    Table inAttribute;
    Table inSection;  ///< In a text that begins with the marker of a CDATA section.
};

constexpr Tables TablesFor(Reserved reserved)
{
    Table inSection = TableFor(false, reserved);
    if (reserved == Reserved::kBare)
        inSection.Set('\r', "\r");
    return {TableFor(false, reserved), TableFor(true, reserved), inSection};
}

constexpr Tables kWithReferences = TablesFor(Reserved::kAsReferences);
constexpr Tables kWithBare = TablesFor(Reserved::kBare);
constexpr Table kInName;  // names hold nothing that must be replaced

/// Writes each character as the table says, what XML 1.0 cannot carry as U+FFFD.
void Put(UTF8Builder& out, std::u16string_view text, const Table& table)
{
    static_assert(Table::kRoom >= ferrite::utility::kLongestSequence);
    constexpr std::ptrdiff_t kBlock = 64;
    constexpr std::ptrdiff_t kGroup = 4;
    const char16_t* at = text.data();
    const char16_t* const end = at + text.size();
    while (at != end) {
        const char16_t* const blockEnd = at + std::min(end - at, kBlock);
        char* to = out.Room(kBlock * Table::kRoom);
        std::size_t surplus = 0;
        // One branch for a group, up to the first with another character: what follows in the block is likely
        // to have more, and a branch that goes either way costs more than it saves. An OR is at least as
        // large as each of its operands.
        while (blockEnd - at >= kGroup && Table::Has(static_cast<char16_t>(at[0] | at[1] | at[2] | at[3])))
            for (std::ptrdiff_t i = 0; i < kGroup; ++i)
                to = table.Write(*at++, to);
        while (at < blockEnd) {  // a surrogate pair may end behind the block
            if (Table::Has(*at)) {
                to = table.Write(*at++, to);
                continue;
            }
            const char16_t* const character = at;
            const char* const sequence = to;
            const std::uint32_t point = ferrite::utility::ReadCodePoint(at, end);
            // Of the first 65,536, XML 1.0 cannot carry the last two.
            to = ferrite::utility::WriteCodePoint((point | 1U) == 0xFFFF ? 0xFFFD : point, to);
            surplus += static_cast<std::size_t>((to - sequence) - (at - character));
        }
        out.Fill(to, surplus);
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

void PutAttributes(UTF8Builder& out, const DOMNode* element, const Table& table)
{
    const xercesc::DOMNamedNodeMap* const attributes = element->getAttributes();
    const XMLSize_t count = attributes->getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        const DOMNode* const attribute = attributes->item(i);
        out.Put(" ");
        Put(out, attribute->getNodeName(), kInName);
        out.Put("=\"");
        // The value of the attribute itself costs a cast.
        for (const DOMNode* text = attribute->getFirstChild(); text != nullptr; text = text->getNextSibling())
            if (IsText(text))
                Put(out, DataOf(text), table);
        out.Put("\"");
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

/// An element whose children are being written.
struct OpenElement
{
    const DOMNode* node;  // a child's parent costs a cast
    std::u16string_view name;
};

/// Writes what stands before the node's children. \return The first child to go on with, or null.
const DOMNode* Open(UTF8Builder& out, const DOMNode* node, const Tables& tables,
                    std::vector<OpenElement>& open)
{
    if (IsText(node)) {
        const std::u16string_view text = DataOf(node);
        const bool isSection = text.substr(0, kSectionBegin.size()) == kSectionBegin;
        Put(out, text, isSection ? tables.inSection : tables.inText);
    } else if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
        const std::u16string_view name = node->getNodeName();
        out.Put("<");
        Put(out, name, kInName);
        PutAttributes(out, node, tables.inAttribute);
        const DOMNode* const child = node->getFirstChild();
        if (!IsEmpty(child)) {
            out.Put(">");
            open.push_back({node, name});
            return child;
        }
        out.Put("/>");
    }
    return nullptr;
}

}  // namespace

UTF8Builder WriteText(const xercesc::DOMDocument* document, Reserved reserved)
{
    const Tables& tables = reserved == Reserved::kBare ? kWithBare : kWithReferences;
    UTF8Builder out;
    std::vector<OpenElement> open;
    const DOMNode* node = document->getFirstChild();
    while (node != nullptr) {
        if (const DOMNode* const child = Open(out, node, tables, open)) {
            node = child;
            continue;
        }
        const DOMNode* next = node->getNextSibling();
        while (next == nullptr && !open.empty()) {
            out.Put("</");
            Put(out, open.back().name, kInName);
            out.Put(">");
            next = open.back().node->getNextSibling();
            open.pop_back();
        }
        node = next;
    }
    return out;
}

}  // namespace AC
