#pragma once

#include "protocol/Model.h"

#include <string>
#include <vector>

namespace Protocol {

/// Something that is otherwise for panels than it was.
struct Change
{
    bool breaks;          ///< What panels did or relied on does not hold any more; else something was added.
    std::string subject;  ///< The event or the place: what a changelog names.
    std::string what;     ///< For people, one line.
};

/// \return What changed for panels from one version to another, breaks first. What only hosts see (constants,
///         classes and payloads of station messages) and what only explains (texts, samples, examples) is
///         left out. Any thread.
std::vector<Change> Compare(const Model& before, const Model& now);

}  // namespace Protocol
