#pragma once

#include "protocol/Model.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Tells what a panel's text would silently lose or mean otherwise.
namespace Protocol {

/// What is wrong with one place of a text. All texts are one line of UTF-8, cut short where they quote; none
/// quotes a password.
struct Finding
{
    std::size_t line;    ///< Of the < of the element, from 1.
    std::size_t column;  ///< From 1, in UTF-16 units.
    std::string kind;    ///< A word of Kinds.def.
    std::string path;    ///< Elements below the root, then the attribute, as in Place::path; empty: the root.
    std::string what;    ///< What happens.
    std::string advice;  ///< What to do.
};

/// A kind of finding: a row of Kinds.def.
struct FindingKind
{
    std::string_view name;   ///< Stable.
    std::string_view about;  ///< For people.
};

/// All of them, in the order of the document.
const std::vector<FindingKind>& FindingKinds();

/// \param text UTF-8. \param event The identifier of the request that carries it; empty: any.
/// \return What was found, in the order of the text; empty: the host reads all of it as it is meant.
/// \throws std::logic_error before the XML platform is initialised; xercesc::OutOfMemoryException,
///         std::bad_alloc. Any thread.
std::vector<Finding> Check(const Model& model, const std::string& text, const std::string& event);

/// \return "line 3, column 5: WHAT; ADVICE".
std::string Describe(const Finding& finding);

}  // namespace Protocol
