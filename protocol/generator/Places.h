#pragma once

#include "protocol/Model.h"
#include "protocol/generator/Members.h"
#include "protocol/generator/Node.h"

#include <string>
#include <string_view>
#include <vector>

namespace Protocol {
struct FormFact;
}

namespace Protocol::Generator {

/// \return Every place, from the facts and the description of the records, in the order in which
///         notifications hold them. Needs an installed host.
/// \throws std::runtime_error with what is missing: a row, a member.
std::vector<Place> MakePlaces();

/// \return What each of the form's words is in a record; nothing where no place has a number for it. Needs an
///         installed host.
/// \throws std::runtime_error when a code that facts have is another result.
std::vector<int> ValuesOfWords(const std::vector<Place>& places, const FormFact& form);

/// \return The words of a list that facts have, separated by blanks.
std::vector<std::string> Words(std::string_view text);

/// \return An empty request.
Node Request();

/// Puts the element around a place there, or the one that has it as attribute, where that one says something
/// by itself.
void PutAround(const std::vector<Place>& places, Node& request, std::string_view path);

/// Puts what a place needs, with the values of the samples.
void PutNeeds(const std::vector<Place>& places, Node& request, const Place& place);

}  // namespace Protocol::Generator
