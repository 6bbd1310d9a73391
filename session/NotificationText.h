#pragma once

#include <string>

namespace Session {

/// Compares two notification texts as DOM trees, names with a colon as any other; when one of them is not
/// well-formed, as texts. Does not recurse.
/// \param first, second UTF-8.
bool SameNotificationText(const std::string& first, const std::string& second);

/// \return The text for people: an element a line, indented by two spaces a level, FTP passwords masked; the
///         text as it is when it is not well-formed. UTF-8, lines without a final line feed. Does not
///         recurse.
/// \param text UTF-8.
std::string IndentedXML(const std::string& text);

}  // namespace Session
