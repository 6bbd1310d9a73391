#pragma once

#include <string>
#include <string_view>

/// Passwords have no place in recordings and reports. The member that holds one is never written
/// (ValueWriter); these look after texts that may hold one in any way.
namespace Session {

/// \return Whether the text mentions an FTP password, in any capitals.
bool MentionsPassword(std::string_view text);

/// \return Whether an XML text in it may, written in one piece or not.
bool MayMentionPassword(std::string_view text);

/// \return The text up to the first mention of an FTP password, which an ill-formed text may write in any
/// way;
///         what follows it becomes "=***".
std::string WithoutPassword(std::string text);

/// \param xml A panel's text, well-formed or not.
/// \return The same with each password masked and nothing else changed; when it is not well-formed,
///         WithoutPassword(xml). What means the same is masked alike: a value that mentions a password in
///         words ends behind the mention.
std::string PasswordsMaskedInXML(std::string xml);

}  // namespace Session
