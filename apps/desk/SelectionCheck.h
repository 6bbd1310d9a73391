#pragma once

#include <string>

/// Plays a session in a process of its own, since a host is installed here, and compares its effects.
/// \param program Of this project, by its path. \param session The text of a session file.
/// \return Why it does not stand alone, in one line; empty: it does.
std::string CheckSession(const std::string& program, const std::string& session);
