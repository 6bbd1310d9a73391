#pragma once

#include <cstddef>
#include <string>

namespace Desk {

/// \param text UTF-8. \return So many bytes of it at most, and an ellipsis where there are more.
inline std::string Shortened(std::string text, std::size_t most)
{
    if (text.size() <= most)
        return text;
    while ((static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U)
        --most;
    text.resize(most);
    return text + "\u2026";
}

}  // namespace Desk
