#pragma once

namespace Ridge::XMLUtilities {

/// How a text writes what is reserved: & and <, in texts also >, in attributes also ".
enum class Encoding
{
    kPlain,    ///< As references.
    kDecoded,  ///< Bare, as DecodeReservedCharacters leaves the plain text. It need not be well-formed.
};

}  // namespace Ridge::XMLUtilities
