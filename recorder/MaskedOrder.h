#pragma once

#include <string>

namespace Recording {

/// The library writes keywords, and the properties of a namespace, in the order of their texts.
/// \param xml A masked notification or request. \return The same with these in the order that the masks give
/// them;
///            what is not as the library writes it stays.
std::string InMaskedOrder(std::string xml);

}  // namespace Recording
