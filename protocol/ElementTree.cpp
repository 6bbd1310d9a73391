#include "protocol/ElementTree.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace Protocol {
namespace {

/// \return The element of a path that was added before.
Element& Find(Element& root, std::string_view path)
{
    Element* at = &root;
    for (std::string_view rest = path; !rest.empty();) {
        const std::string_view name = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (at->children.empty() || at->children.back().name != name)
            throw std::logic_error("the protocol's model has " + std::string(path) + " out of order");
        at = &at->children.back();
    }
    return *at;
}

}  // namespace

Element ElementTree(const Model& model, bool Place::*used)
{
    Element root;
    for (const Place& place : model.places) {
        if (!(place.*used))
            continue;
        const std::string_view path = place.path;
        if (!AttributeOf(path).empty()) {
            Find(root, path.substr(0, path.find('@'))).attributes.push_back(&place);
            continue;
        }
        const std::string_view name = ElementOf(path);
        const bool isNested = name.size() < path.size() && path.substr(0, path.find('/')) == name;
        Find(root, ParentOf(path))
            .children.push_back({&place, name, {}, {}, isNested && place.form == kList});
    }
    return root;
}

}  // namespace Protocol
