#pragma once

#include "assetconnector/xml/ParseObserver.h"

#include <cstddef>
#include <string_view>

namespace AC {

/// Walks once over a text and counts its lines and columns.
class TextPlaces
{
public:
    explicit TextPlaces(std::u16string_view text) : mText(text) {}

    /// \param at Not before one that was asked for earlier. \return The place of that unit.
    const TextPlace& PlaceOf(std::size_t at);

    /// \return The place of the next < that begins an element. The text is well-formed up to there, and there
    ///         is one: ends of elements, comments, instructions and CDATA sections are passed over.
    const TextPlace& NextElement();

private:
    std::u16string_view mText;
    std::size_t mAt = 0;    // what mPlace says
    std::size_t mNext = 0;  // where to look for the next element
    TextPlace mPlace;
};

}  // namespace AC
