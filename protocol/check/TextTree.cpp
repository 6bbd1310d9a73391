#include "protocol/check/TextTree.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <xercesc/dom/DOM.hpp>

#include <algorithm>

namespace Protocol::Checking {
namespace {

using ferrite::utility::UTF16to8;
using xercesc::DOMNode;

constexpr const char* kBlanks = " \t\r\n";

class PlaceList final : public AC::ParseObserver
{
public:
    void OnElement(const xercesc::DOMElement* /*element*/, const AC::TextPlace& place) override
    {
        places.push_back(place);
    }

    std::vector<AC::TextPlace> places;
};

/// Adds a text or a section to the element that it stands in.
void AddText(const DOMNode& node, Element& parent)
{
    std::string text = UTF16to8(node.getNodeValue());
    if (node.getPreviousSibling() != nullptr) {
        parent.hasLostText = parent.hasLostText || !IsBlank(text);
        return;
    }
    parent.value = std::move(text);
    parent.isSection = node.getNodeType() == DOMNode::CDATA_SECTION_NODE;
}

void AddElement(const DOMNode& node, const AC::TextPlace& place, std::size_t parent, TextTree& tree)
{
    Element element;
    element.name = UTF16to8(node.getNodeName());
    element.place = place;
    element.parent = parent;
    const xercesc::DOMNamedNodeMap& attributes = *node.getAttributes();
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
        const DOMNode& attribute = *attributes.item(i);
        element.attributes.emplace_back(UTF16to8(attribute.getNodeName()),
                                        UTF16to8(attribute.getNodeValue()));
    }
    if (parent != kNoElement)
        tree.elements[parent].children.push_back(tree.elements.size());
    tree.elements.push_back(std::move(element));
}

void AddAll(const DOMNode* root, const std::vector<AC::TextPlace>& places, TextTree& tree)
{
    tree.elements.reserve(places.size());
    std::size_t open = kNoElement;  // the element around the node
    const DOMNode* node = root;
    while (node != nullptr) {
        if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
            AddElement(*node, places[tree.elements.size()], open, tree);
            if (const DOMNode* const child = node->getFirstChild()) {
                open = tree.elements.size() - 1;
                node = child;
                continue;
            }
        } else {
            AddText(*node, tree.elements[open]);
        }
        while (node != root && node->getNextSibling() == nullptr) {
            node = node->getParentNode();
            open = tree.elements[open].parent;
        }
        node = node == root ? nullptr : node->getNextSibling();
    }
}

}  // namespace

TextTree ReadTree(const std::string& text)
{
    TextTree tree;
    AC::MessageParser parser;
    PlaceList observer;
    const xercesc::DOMDocument* const document = parser.Parse(ferrite::utility::UTF8to16(text), &observer);
    if (document == nullptr)
        tree.error = parser.Error();
    else
        AddAll(document->getDocumentElement(), observer.places, tree);
    return tree;
}

std::size_t FindChild(const TextTree& tree, std::size_t element, const std::string& name)
{
    for (const std::size_t child : tree.elements[element].children)
        if (tree.elements[child].name == name)
            return child;
    return kNoElement;
}

const std::string* FindAttribute(const Element& element, const std::string& name)
{
    const auto found = std::find_if(element.attributes.begin(), element.attributes.end(),
                                    [&name](const auto& attribute) { return attribute.first == name; });
    return found == element.attributes.end() ? nullptr : &found->second;
}

bool IsBlank(const std::string& text)
{
    return text.find_first_not_of(kBlanks) == std::string::npos;
}

std::string Trimmed(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(kBlanks);
    return begin == std::string::npos ? std::string()
                                      : text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

}  // namespace Protocol::Checking
