#pragma once

#include "assetconnector/host/ferrite/ReservedCharacters.h"

#include <string_view>

/// \return The notification as EncodeDecodedNotification gives it, from the text of the encoder: step by
///         step, where the library takes one. In a text that begins a CDATA section CR is bare.
inline UTF16String DecodedForm(const UTF16String& encoded)
{
    constexpr std::u16string_view kSection = u"&lt;![CDATA[";
    constexpr std::u16string_view kReturn = u"&#xD;";
    UTF16String text;
    bool isInTag = false;
    bool isInValue = false;
    bool isInSection = false;
    for (std::u16string_view rest = encoded; !rest.empty();) {
        const char16_t unit = rest.front();
        const bool wasInTag = isInTag;
        isInValue = isInValue != (isInTag && unit == u'"');
        isInTag = unit == u'<' || (isInTag && (isInValue || unit != u'>'));
        const std::size_t length =
            isInSection && rest.substr(0, kReturn.size()) == kReturn ? kReturn.size() : 1;
        text += length == 1 ? unit : u'\r';
        rest.remove_prefix(length);
        if (isInTag != wasInTag)
            isInSection = !isInTag && rest.substr(0, kSection.size()) == kSection;
    }
    ferrite::xml::utils::DecodeReservedCharacters(text, text);
    return text;
}
