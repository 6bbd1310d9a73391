#pragma once

#include "assetconnector/host/ferrite/Unicode.h"

/// Between the host's narrow strings, which are UTF-8, and UTF16String; total, as ferrite::utility's
/// conversions are.
namespace Kiln {

inline UTF16String MakeString(const std::string& text)
{
    return ferrite::utility::UTF8to16(text);
}

inline std::string MakeStdString(const UTF16String& text)
{
    return ferrite::utility::UTF16to8(text);
}

}  // namespace Kiln
