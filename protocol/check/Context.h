#pragma once

#include "protocol/check/Names.h"
#include "protocol/check/Report.h"
#include "protocol/check/Shape.h"
#include "protocol/check/TextTree.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Protocol::Checking {

/// One check: what the rules look at, and what they found so far.
struct Context
{
    const Model& model;
    const Shape& shape;
    const NameBook& names;
    const TextTree& tree;
    const Quoting& quoting;

    std::vector<const Slot*> slots{};  ///< What each element of the tree is; null for what is not read.
    std::vector<bool> isReported{};  ///< Whether something is wrong with an element's own text or attributes.
    Report report{};

    const Element& At(std::size_t element) const { return tree.elements[element]; }

    /// Adds a finding. \param name Of an attribute of the element, or of a child that is not known; after @
    /// or /.
    void Add(std::size_t element, const Remark& remark, const std::string& name = {});

    /// \param path Of a place in the same item, or of one around it.
    /// \return Its value, as the host would find it from the element; null without it.
    const std::string* FindValue(std::size_t element, std::string_view path) const;
};

}  // namespace Protocol::Checking
