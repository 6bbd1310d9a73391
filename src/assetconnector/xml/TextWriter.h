#pragma once

#include "assetconnector/xml/UTF8Builder.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <string_view>

namespace AC {

/// The marker with which a CDATA section begins.
constexpr std::u16string_view kSectionBegin = u"<![CDATA[";

/// How what is reserved is written: & and <, in texts also >, in attributes also ".
enum class Reserved
{
    kAsReferences,
    /// What DecodeReservedCharacters makes of the references: it decodes no other that is written. A text
    /// that begins with the marker of a CDATA section becomes one, where no reference is read: CR is bare in
    /// it.
    kBare,
};

/// Writes the text that XMLUtilities::ConvertDomToXMLString describes.
/// \return The text, yet to be put together. A large document should be released first: its text may then
///         take its memory, which the system need not clear for it.
UTF8Builder WriteText(const xercesc::DOMDocument* document, Reserved reserved);

}  // namespace AC
