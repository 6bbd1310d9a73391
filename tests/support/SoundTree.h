#pragma once

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/XMLString.hpp>

/// Expects each node of a tree to be where its neighbours say, and attributes sorted by name.
inline void ExpectSound(const xercesc::DOMNode* node, const xercesc::DOMDocument* document)
{
    const xercesc::DOMNode* previous = nullptr;
    for (const xercesc::DOMNode* child = node->getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        EXPECT_EQ(child->getParentNode(), node);
        EXPECT_EQ(child->getOwnerDocument(), document);
        EXPECT_EQ(child->getPreviousSibling(), previous);
        ExpectSound(child, document);
        previous = child;
    }
    EXPECT_EQ(node->getLastChild(), previous);
    const xercesc::DOMNamedNodeMap* const attributes = node->getAttributes();
    for (XMLSize_t i = 0; attributes != nullptr && i < attributes->getLength(); ++i) {
        const auto* const attribute = static_cast<const xercesc::DOMAttr*>(attributes->item(i));
        EXPECT_EQ(attribute->getOwnerElement(), node);
        EXPECT_EQ(attribute->getOwnerDocument(), document);
        EXPECT_TRUE(attribute->getSpecified());
        EXPECT_EQ(attributes->getNamedItem(attribute->getName()), attribute);
        if (i > 0) {
            EXPECT_LT(xercesc::XMLString::compareString(attributes->item(i - 1)->getNodeName(),
                                                        attribute->getName()),
                      0);
        }
        ExpectSound(attribute, document);
    }
}
