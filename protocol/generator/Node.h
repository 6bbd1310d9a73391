#pragma once

#include "protocol/Model.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Protocol::Generator {

/// An element of a text that is made or was sent. Texts are UTF-8, as they are, not encoded.
struct Node
{
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text;
    bool isSection = false;  ///< The text is a CDATA section.
    std::vector<Node> children;

    /// \return The first child of that name; made when there is none.
    Node& Child(std::string_view childName);

    /// \return The text of the tree, with a line for each element and a line feed at the end.
    std::string Text() const;
};

/// Puts a value at a place below the root, with the elements around it. A nested list gets an item.
void Put(Node& root, std::string_view path, std::string_view value);

/// \return The tree of a text that was sent. \throws std::runtime_error when it is not well-formed.
Node ReadNode(const std::string& text);

/// \return Whether the place is a list within an item of a list of the same name, which holds the same again.
bool IsNested(std::string_view path);

/// Calls visit(path, value) for each element and attribute below the root, in their order; the value of an
/// element is its text. The visitor may change it. What nested lists hold has the paths of the outermost one.
template <class Visit>
void ForEachPlace(Node& node, const std::string& path, Visit&& visit)
{
    const bool isProperties = ElementOf(path) == "namespace";
    for (Node& child : node.children) {
        std::string childPath = path;
        childPath.append(path.empty() ? "" : "/").append(isProperties ? "*" : child.name);
        visit(childPath, child.text);
        for (auto& [name, value] : child.attributes)
            visit(std::string(childPath).append("@").append(name), value);
        ForEachPlace(child, IsNested(childPath) ? child.name : childPath, visit);
    }
}

}  // namespace Protocol::Generator
