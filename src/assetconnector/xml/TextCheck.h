#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace AC {

/// What the scanner of the XML library must not meet in a text.
struct TextFlaw
{
    std::size_t at;  ///< Index of the unit.
    const char16_t* reason;
};

/// Looks for what the scanner would let pass or take long for: a zero is the end of the text to it when it
/// stands behind the root, and half a surrogate pair a part of an attribute's value when it ends one; of an
/// element's attributes, of which there may be MessageLimits::kMostAttributes, it looks each up among the
/// others before anybody is asked.
/// \return The first that was found. In a text that is not well-formed it may stand behind the place where
///         the scanner would end.
std::optional<TextFlaw> FindFlaw(std::u16string_view text);

}  // namespace AC
