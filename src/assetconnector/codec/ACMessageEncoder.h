#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/message/ACMessage.h"

#include <string>

/// Notifications: from the record to XML text.
namespace AC::ACMessageEncoder {

/// Encodes what the record holds; members at their construction values are left out.
/// \param rootName The root element, kNotificationRoot for every notification.
/// \return The text, without declaration and indentation.
/// \throws xercesc::DOMException for a root or a custom metadata property whose name is not an XML name (one
///         with a character beyond U+FFFF is none to the DOM, although its parser reads it);
///         xercesc::OutOfMemoryException, std::bad_alloc; std::logic_error before the XML platform is
///         initialised, and for file lists and markers without an installed host; what the host throws.
/// Any thread; the record and what it shares are only read.
AC_API UTF16String EncoderACMessage(const ACMessage& message, const UTF16String& rootName);

/// The same as UTF-8.
AC_API std::string EncodeUTF8(const ACMessage& message, const UTF16String& rootName);

/// The same with what is reserved left bare, as DecodeReservedCharacters leaves that text; it need not be
/// well-formed. In a text that begins a CDATA section CR is bare, too: there a parser reads no reference.
AC_API std::string EncodeDecodedUTF8(const ACMessage& message, const UTF16String& rootName);

}  // namespace AC::ACMessageEncoder
