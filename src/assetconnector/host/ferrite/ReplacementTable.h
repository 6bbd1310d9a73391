#pragma once

#include "assetconnector/host/Export.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ferrite::utility {

/// What is written for each ASCII character: a short text, for most of them the character itself. All are
/// copied alike, so that no branch asks which is which: where they mix, the processor mispredicts it.
/// \tparam Unit Of the texts that are written.
template <class Unit>
class ReplacementTable
{
public:
    /// How many units a copy takes at its place, whatever the text's length.
    AC_CONSTANT static constexpr std::size_t kRoom = 8;

    /// Every character stands for itself.
    constexpr ReplacementTable()
    {
        for (std::size_t character = 0; character < kCharacters; ++character) {
            mTexts[character][0] = static_cast<Unit>(character);
            mSizes[character] = 1;
        }
    }

    /// \param character ASCII. \param text At most kRoom units.
    constexpr void Set(std::size_t character, std::basic_string_view<Unit> text)
    {
        for (std::size_t i = 0; i < text.size(); ++i)
            mTexts[character][i] = text[i];
        mSizes[character] = static_cast<std::uint8_t>(text.size());
    }

    static constexpr bool Has(char16_t unit) { return unit < kCharacters; }

    /// Writes the text of a character that the table has. \param out Has room for kRoom units. \return Where
    /// the text ends.
    Unit* Write(char16_t character, Unit* out) const
    {
        std::copy(mTexts[character].begin(), mTexts[character].end(), out);
        return out + mSizes[character];
    }

private:
    AC_CONSTANT static constexpr std::size_t kCharacters = 128;

    std::array<std::array<Unit, kRoom>, kCharacters> mTexts{};
    std::array<std::uint8_t, kCharacters> mSizes{};
};

}  // namespace ferrite::utility
