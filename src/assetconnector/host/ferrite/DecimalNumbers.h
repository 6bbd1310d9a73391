#pragma once

#include "assetconnector/host/Export.h"

#include <cstdint>
#include <string_view>

/// Decimal numbers at the start of a text, as the host's UTF-16 string stream reads them in the classic
/// locale. Leading white space (space, TAB to CR) is skipped, text after the number is ignored. Pure. A text
/// without digits gives 0; so do, for an integer, a sign that the type refuses and an overflow.
namespace ferrite::utility {

/// A sign is allowed.
AC_API std::int32_t ParseInt32(std::u16string_view text) noexcept;
AC_API std::int64_t ParseInt64(std::u16string_view text) noexcept;

/// A sign is refused.
AC_API std::uint32_t ParseUInt32(std::u16string_view text) noexcept;

/// Digits with an optional sign, point and exponent; no hexadecimal form, no words. Beyond the range of
/// double: infinity with the text's sign, or zero. \throws std::bad_alloc
AC_API double ParseDouble(std::u16string_view text);

}  // namespace ferrite::utility
