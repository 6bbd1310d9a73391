#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"

/// The five characters that XML reserves, & < > " ', as named references and back. Pure and total: one
/// pass from left to right, what a replacement put in is not looked at again, any other reference stays
/// as it is. Input and output may be the same string.
namespace ferrite::xml::utils {

AC_API void EncodeReservedCharacters(const UTF16String& input, UTF16String& output);

AC_API void DecodeReservedCharacters(const UTF16String& input, UTF16String& output);

}  // namespace ferrite::xml::utils
