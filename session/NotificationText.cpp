#include "session/NotificationText.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/xml/XMLUtilities.h"
#include "session/format/Json.h"
#include "session/format/Passwords.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Session {
namespace {

constexpr std::string_view kPassword = "ftpPassword";

using xercesc::DOMNamedNodeMap;
using xercesc::DOMNode;

/// A parsed text.
class Tree
{
public:
    explicit Tree(const std::string& text)
    {
        Ridge::XMLUtilities::GetDOMDocument(mParser, ferrite::utility::UTF8to16(text), mDocument);
    }

    /// \return The document element; null when the text is not well-formed.
    const DOMNode* Root() const { return mDocument == nullptr ? nullptr : mDocument->getDocumentElement(); }

private:
    AC::MessageParser mParser;
    xercesc::DOMDocument* mDocument = nullptr;
};

/// \return Whether the two are alike but for their children.
bool SameNode(const DOMNode* a, const DOMNode* b)
{
    if (a == nullptr || b == nullptr)
        return a == b;
    using xercesc::XMLString;
    if (a->getNodeType() != b->getNodeType() || !XMLString::equals(a->getNodeName(), b->getNodeName()) ||
        !XMLString::equals(a->getNodeValue(), b->getNodeValue()))
        return false;
    const DOMNamedNodeMap* const attributes = a->getAttributes();
    const DOMNamedNodeMap* const others = b->getAttributes();
    if (attributes == nullptr || others == nullptr)
        return attributes == others;
    if (attributes->getLength() != others->getLength())
        return false;
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i)  // both are sorted by name
        if (!SameNode(attributes->item(i), others->item(i)))
            return false;
    return true;
}

bool SameTree(const DOMNode* root, const DOMNode* otherRoot)
{
    const DOMNode* a = root;
    const DOMNode* b = otherRoot;
    if (!SameNode(a, b))
        return false;
    while (true) {
        if (!SameNode(a->getFirstChild(), b->getFirstChild()))
            return false;
        if (a->getFirstChild() != nullptr) {
            a = a->getFirstChild();
            b = b->getFirstChild();
            continue;
        }
        while (a != root && a->getNextSibling() == nullptr && b->getNextSibling() == nullptr) {
            a = a->getParentNode();
            b = b->getParentNode();
        }
        if (a == root)
            return true;
        if (!SameNode(a->getNextSibling(), b->getNextSibling()))
            return false;
        a = a->getNextSibling();
        b = b->getNextSibling();
    }
}

/// Writes a tree, an element a line.
class Indenter
{
public:
    std::string Write(const DOMNode* root)
    {
        const DOMNode* node = root;
        while (true) {
            if (Enter(node)) {
                node = node->getFirstChild();
                ++mDepth;
                continue;
            }
            while (node != root && node->getNextSibling() == nullptr) {
                node = node->getParentNode();
                --mDepth;
                BeginLine();
                mText += "</" + Utf8(node->getNodeName()) + '>';
            }
            if (node == root)
                return std::move(mText);
            node = node->getNextSibling();
        }
    }

private:
    /// Writes the node up to its children. \return Whether these are to follow.
    bool Enter(const DOMNode* node)
    {
        BeginLine();
        if (node->getNodeType() != DOMNode::ELEMENT_NODE) {
            WriteText(node);
            return false;
        }
        const std::string name = Utf8(node->getNodeName());
        mText += '<' + name;
        const DOMNamedNodeMap* const attributes = node->getAttributes();
        for (XMLSize_t i = 0; i < attributes->getLength(); ++i)
            WriteAttribute(*attributes->item(i));
        const DOMNode* const child = node->getFirstChild();
        if (child == nullptr) {
            mText += "/>";
            return false;
        }
        mText += '>';
        if (child->getNextSibling() != nullptr || child->getNodeType() == DOMNode::ELEMENT_NODE)
            return true;
        WriteText(child);
        mText += "</" + name + '>';
        return false;
    }

    void WriteAttribute(const DOMNode& attribute)
    {
        mText += ' ' + Utf8(attribute.getNodeName()) + "=\"";
        const std::string value = Utf8(attribute.getNodeValue());
        const bool isPassword = Utf8(attribute.getNodeName()) == kPassword && !value.empty();
        Append(isPassword ? "***" : WithoutPassword(value));
        mText += '"';
    }

    void WriteText(const DOMNode* node)
    {
        if (node->getNodeType() == DOMNode::CDATA_SECTION_NODE)
            mText += "<![CDATA[" + WithoutPassword(Utf8(node->getNodeValue())) + "]]>";
        else
            Append(WithoutPassword(Utf8(node->getNodeValue())));
    }

    void Append(const std::string& text)
    {
        for (const char c : text) {
            if (c == '&')
                mText += "&amp;";
            else if (c == '<')
                mText += "&lt;";
            else if (c == '"')
                mText += "&quot;";
            else
                mText += c;
        }
    }

    void BeginLine()
    {
        if (!mText.empty())
            mText += '\n';
        mText.append(2 * std::min(mDepth, kDeepestIndent), ' ');
    }

    static std::string Utf8(const XMLCh* text) { return ferrite::utility::UTF16to8(text); }

    std::string mText;
    std::size_t mDepth = 0;
};

}  // namespace

bool SameNotificationText(const std::string& first, const std::string& second)
{
    if (first == second)
        return true;
    const Tree a(first);
    const Tree b(second);
    return a.Root() != nullptr && b.Root() != nullptr && SameTree(a.Root(), b.Root());
}

std::string IndentedXML(const std::string& text)
{
    const Tree tree(text);
    return tree.Root() == nullptr ? WithoutPassword(text) : Indenter().Write(tree.Root());
}

}  // namespace Session
