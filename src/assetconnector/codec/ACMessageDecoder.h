#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/message/ACMessage.h"
#include "assetconnector/xml/MessageParser.h"

/// Panel requests: from XML text to the record.
namespace AC::ACMessageDecoder {

/// Decodes a text into a record. Lists are appended to; members are overwritten where the text has their
/// elements, and some where it has not (flags, and texts of the root and of blocks that are there), so pass a
/// fresh record. The name of the root is not looked at, unknown elements are ignored, bad values have fixed
/// outcomes: once the text parses, decoding succeeds.
/// \return false when the text does not parse or has no root; the record is then untouched.
/// \throws std::logic_error before the XML platform is initialised, and for media infos without an installed
///         host; what the host throws, the record then holding what was read so far;
///         xercesc::OutOfMemoryException and std::bad_alloc.
/// Any thread, each with its own record.
AC_API bool DecodeXMLString(const UTF16String& xml, ACMessage& message);

/// The same; \param error receives place and reason when the text does not decode.
AC_API bool DecodeXMLString(const UTF16String& xml, ACMessage& message, ParseError& error);

}  // namespace AC::ACMessageDecoder
