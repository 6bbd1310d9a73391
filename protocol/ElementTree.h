#pragma once

#include "protocol/Model.h"

#include <string_view>
#include <vector>

namespace Protocol {

/// An element with what it may hold.
struct Element
{
    const Place* place = nullptr;  ///< Null for the root.
    std::string_view name;
    std::vector<const Place*> attributes;
    std::vector<Element> children;    ///< In the order of the model.
    bool isLikeTheOutermost = false;  ///< A list inside itself, to any depth: it holds what the child of the
                                      ///< root with its name does.

    /// \return Whether it holds elements.
    bool IsContainer() const { return !children.empty() || isLikeTheOutermost; }
};

/// \param used Place::read for requests, Place::written for notifications.
/// \return The root of such texts. Its parts point into the model.
Element ElementTree(const Model& model, bool Place::*used);

}  // namespace Protocol
