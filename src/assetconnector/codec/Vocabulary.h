#pragma once

#include <cstddef>
#include <string_view>

/// The names of Vocabulary.def.
namespace AC::Vocabulary {

/// A name or fixed word as the DOM wants it, terminated by zero, and with the length that comparison wants.
class Name
{
public:
    template <std::size_t N>
    constexpr Name(const char16_t (&text)[N]) : mText(text, N - 1)
    {
    }

    constexpr const char16_t* Text() const { return mText.data(); }
    constexpr std::u16string_view View() const { return mText; }

    /// \param text Terminated by zero.
    constexpr bool Equals(const char16_t* text) const
    {
        for (const char16_t unit : mText)
            if (*text++ != unit)
                return false;
        return *text == 0;
    }

private:
    std::u16string_view mText;
};

#define AC_NAME(CONSTANT, TEXT) constexpr Name CONSTANT = TEXT;
#include "assetconnector/codec/Vocabulary.def"
#undef AC_NAME

}  // namespace AC::Vocabulary
