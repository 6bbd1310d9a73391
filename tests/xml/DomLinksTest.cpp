// Trees that were linked and trees that the DOM's calls made are the same, and stay so whatever is done to
// them.

#include "assetconnector/xml/DomLinks.h"
#include "assetconnector/xml/XMLUtilities.h"
#include "tests/support/HostTest.h"
#include "tests/support/SoundTree.h"

#include <functional>
#include <memory>

namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

/// Both make a tree of the text below.
struct ByLinks
{
    static void Append(DOMElement* parent, DOMNode* child) { AC::DomLinks::AppendChild(parent, child); }
    static void Set(DOMElement* element, const XMLCh* name, const XMLCh* value)
    {
        AC::DomLinks::AddAttribute(element, element->getOwnerDocument()->createAttribute(name), value);
    }
};

struct ByCalls
{
    static void Append(DOMElement* parent, DOMNode* child) { parent->appendChild(child); }
    static void Set(DOMElement* element, const XMLCh* name, const XMLCh* value)
    {
        element->setAttribute(name, value);
    }
};

constexpr char16_t kTree[] =
    u"<r c='x&lt;y' b='' d='4' a='1'><e/>one<![CDATA[two]]><e z='1'><f>three</f><g/></e>"
    u"<e><![CDATA[]]></e>four</r>";

template <class Calls>
DOMDocument* Build()
{
    DOMDocument* const document = Ridge::XMLUtilities::CreateDomDocument();
    DOMElement* const root = document->createElement(u"r");
    document->appendChild(root);
    for (const auto& [name, value] : {std::pair(u"c", u"x<y"), {u"b", u""}, {u"d", u"4"}, {u"a", u"1"}})
        Calls::Set(root, name, value);
    Calls::Append(root, document->createElement(u"e"));
    Calls::Append(root, document->createTextNode(u"one"));
    Calls::Append(root, document->createCDATASection(u"two"));
    DOMElement* const element = document->createElement(u"e");
    Calls::Set(element, u"z", u"1");
    Calls::Append(root, element);
    Calls::Append(element, document->createElement(u"f"));
    Calls::Append(static_cast<DOMElement*>(element->getFirstChild()), document->createTextNode(u"three"));
    Calls::Append(element, document->createElement(u"g"));
    DOMElement* const last = document->createElement(u"e");
    Calls::Append(last, document->createCDATASection(u""));
    Calls::Append(root, last);
    Calls::Append(root, document->createTextNode(u"four"));
    return document;
}

/// What a caller may do to a document.
const std::pair<const char*, std::function<void(DOMElement* root)>> kChanges[] = {
    {"nothing", [](DOMElement*) {}},
    {"first child removed and released",
     [](DOMElement* root) { root->removeChild(root->getFirstChild())->release(); }},
    {"last child removed and released",
     [](DOMElement* root) { root->removeChild(root->getLastChild())->release(); }},
    {"middle child moved to the front",
     [](DOMElement* root) {
         root->insertBefore(root->getFirstElementChild()->getNextElementSibling(), root->getFirstChild());
     }},
    {"child replaced",
     [](DOMElement* root) {
         root->replaceChild(root->getOwnerDocument()->createComment(u"x"), root->getFirstChild())->release();
     }},
    {"child appended",
     [](DOMElement* root) { root->appendChild(root->getOwnerDocument()->createElement(u"n")); }},
    {"text split",
     [](DOMElement* root) { static_cast<xercesc::DOMText*>(root->getLastChild())->splitText(2); }},
    {"split and normalised",
     [](DOMElement* root) {
         static_cast<xercesc::DOMText*>(root->getLastChild())->splitText(2);
         root->normalize();
     }},
    {"attributes changed, removed and added",
     [](DOMElement* root) {
         root->setAttribute(u"c", u"other");
         root->removeAttribute(u"a");
         root->setAttribute(u"aa", u"new");
         root->removeAttributeNode(root->getAttributeNode(u"d"))->release();
     }},
    {"attribute renamed",
     [](DOMElement* root) {
         root->getOwnerDocument()->renameNode(root->getAttributeNode(u"a"), nullptr, u"x");
     }},
    {"text content set", [](DOMElement* root) { root->setTextContent(u"all"); }},
    {"root moved into another",
     [](DOMElement* root) {
         DOMDocument* const document = root->getOwnerDocument();
         document->removeChild(root);
         document->appendChild(document->createElement(u"outer"))->appendChild(root);
     }},
    {"copied beside", [](DOMElement* root) { root->appendChild(root->cloneNode(true)); }},
    {"walked by lists",
     [](DOMElement* root) {
         EXPECT_EQ(root->getElementsByTagName(u"e")->getLength(), 3U);
         EXPECT_EQ(root->getChildNodes()->getLength(), 6U);
     }},
};

struct Release
{
    void operator()(DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<DOMDocument, Release>;

using DomLinks = HostTest;

TEST_F(DomLinks, AreWhatTheCallsMake)
{
    for (const auto& [name, change] : kChanges) {
        SCOPED_TRACE(name);
        const Document called(Build<ByCalls>());
        const Document linked(Build<ByLinks>());
        AC::MessageParser parser;
        DOMDocument* const parsed = parser.Parse(kTree);
        ASSERT_NE(parsed, nullptr);
        const auto text = [](DOMDocument* document) {
            return Narrow(Ridge::XMLUtilities::ConvertDomToXMLString(document));
        };
        for (DOMDocument* const document : {called.get(), linked.get(), parsed}) {
            change(document->getDocumentElement());
            ExpectSound(document, document);
            EXPECT_TRUE(document->getDocumentElement()->isEqualNode(called->getDocumentElement()));
            EXPECT_TRUE(called->getDocumentElement()->isEqualNode(document->getDocumentElement()));
            EXPECT_EQ(text(document), text(called.get()));
            const DOMNode* const copy = document->getDocumentElement()->cloneNode(true);
            EXPECT_TRUE(copy->isEqualNode(called->getDocumentElement()));
            EXPECT_EQ(copy->getParentNode(), nullptr);
        }
    }
}

}  // namespace
