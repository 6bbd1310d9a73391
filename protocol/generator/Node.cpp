#include "protocol/generator/Node.h"

#include "assetconnector/host/ferrite/ReservedCharacters.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/xml/XMLUtilities.h"
#include "protocol/Model.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <stdexcept>

namespace Protocol::Generator {
namespace {

using ferrite::utility::UTF16to8;
using ferrite::utility::UTF8to16;

std::string Encoded(const std::string& text)
{
    UTF16String encoded;
    ferrite::xml::utils::EncodeReservedCharacters(UTF8to16(text), encoded);
    return UTF16to8(encoded);
}

void Write(const Node& node, std::size_t depth, std::string& text)
{
    text.append(2 * depth, ' ').append("<").append(node.name);
    for (const auto& [name, value] : node.attributes)
        text.append(" ").append(name).append("=\"").append(Encoded(value)).append("\"");
    if (node.children.empty() && node.text.empty()) {
        text.append("/>\n");
        return;
    }
    text.append(">");
    if (node.children.empty()) {
        text.append(node.isSection ? "<![CDATA[" + node.text + "]]>" : Encoded(node.text));
    } else {
        text.append("\n");
        for (const Node& child : node.children)
            Write(child, depth + 1, text);
        text.append(2 * depth, ' ');
    }
    text.append("</").append(node.name).append(">\n");
}

Node FromDom(const xercesc::DOMElement* element)
{
    Node node;
    node.name = UTF16to8(element->getNodeName());
    const xercesc::DOMNamedNodeMap* const attributes = element->getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i)
        node.attributes.emplace_back(UTF16to8(attributes->item(i)->getNodeName()),
                                     UTF16to8(attributes->item(i)->getNodeValue()));
    for (const xercesc::DOMNode* child = element->getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        if (child->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) {
            node.children.push_back(FromDom(static_cast<const xercesc::DOMElement*>(child)));
        } else {
            node.text = UTF16to8(child->getNodeValue());
            node.isSection = child->getNodeType() == xercesc::DOMNode::CDATA_SECTION_NODE;
        }
    }
    return node;
}

}  // namespace

Node& Node::Child(std::string_view childName)
{
    for (Node& child : children)
        if (child.name == childName)
            return child;
    children.emplace_back().name = childName;
    return children.back();
}

std::string Node::Text() const
{
    std::string written;
    Write(*this, 0, written);
    return written;
}

void Put(Node& root, std::string_view path, std::string_view value)
{
    const std::string_view attribute = AttributeOf(path);
    std::string_view rest = path.substr(0, path.find('@'));
    Node* node = &root;
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find('/'));
        node = &node->Child(name == "*" ? "scene" : name);
        rest.remove_prefix(name.size());
        if (!rest.empty())
            rest.remove_prefix(1);
    }
    if (!attribute.empty())
        node->attributes.emplace_back(attribute, value);
    else if (!value.empty())
        node->text = value;
    if (IsNested(path)) {
        const std::string_view item = path.substr(path.find('/') + 1);
        node->Child(item.substr(0, item.find('/'))).attributes.emplace_back("order", "1");
    }
}

Node ReadNode(const std::string& text)
{
    AC::MessageParser parser;
    xercesc::DOMDocument* document = nullptr;
    AC::ParseError error;
    if (!Ridge::XMLUtilities::GetDOMDocument(parser, UTF8to16(text), document, error))
        throw std::runtime_error("this was sent, but is not well-formed: " + text);
    return FromDom(document->getDocumentElement());
}

bool IsNested(std::string_view path)
{
    const std::string_view name = ElementOf(path);
    return path.size() > name.size() && path.substr(0, name.size()) == name && path[name.size()] == '/';
}

}  // namespace Protocol::Generator
