#pragma once

#include "assetconnector/xml/MessageParser.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Protocol::Checking {

constexpr std::size_t kNoElement = static_cast<std::size_t>(-1);

/// An element of a text, as far as the host would look at it.
struct Element
{
    std::string name;
    AC::TextPlace place;
    std::size_t parent = kNoElement;
    std::vector<std::size_t> children;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::optional<std::string> value;  ///< Its first node, where that is a text or a CDATA section.
    bool isSection = false;            ///< That is a CDATA section.
    bool hasLostText = false;          ///< Some text that is not blank stands behind the first node.
};

/// The elements of a text in document order, the root first: each stands behind its parent.
struct TextTree
{
    std::vector<Element> elements;  ///< Empty when the text does not parse.
    AC::ParseError error;
};

/// \param text UTF-8. Does not recurse.
TextTree ReadTree(const std::string& text);

/// \return The first child of that name; kNoElement without one.
std::size_t FindChild(const TextTree& tree, std::size_t element, const std::string& name);

/// \return The value of the attribute; null without it.
const std::string* FindAttribute(const Element& element, const std::string& name);

/// Blanks are those of XML.
bool IsBlank(const std::string& text);
std::string Trimmed(const std::string& text);

}  // namespace Protocol::Checking
