#pragma once

#include <string>

/// The host's string: 16-bit code units, not checked for well-formed UTF-16, compared unit by unit.
/// A unit is the XML library's XMLCh, so texts cross into the DOM without a copy.
using UTF16String = std::u16string;
