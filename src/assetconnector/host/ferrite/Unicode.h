#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"

#include <string>
#include <string_view>

/// Conversions between 8-bit and 16-bit texts. Total: each byte outside a well-formed UTF-8 sequence and
/// each unpaired surrogate becomes U+FFFD. Pure, safe on any thread; they throw only std::bad_alloc.
namespace ferrite::utility {

/// \param text UTF-8.
AC_API UTF16String UTF8to16(std::string_view text);

/// Appends what UTF8to16 returns.
AC_API void AppendUTF8to16(std::string_view text, UTF16String& result);

/// \param text UTF-16. \return UTF-8.
AC_API std::string UTF16to8(std::u16string_view text);

}  // namespace ferrite::utility
