#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What the program asks of the system, once for each: posix/System.cpp and windows/System.cpp.
namespace AssetConnector::System {

/// Call it first. Standard input and output pass bytes as they are, a terminal shows UTF-8, and a reader who
/// is gone does not end the program.
void PrepareStreams();

/// \return What follows the program's name, in UTF-8.
std::vector<std::string> Arguments(int count, char** arguments);

/// \return The path that an argument names.
std::filesystem::path PathOf(const std::string& argument);

/// \return Whether standard output is a terminal that shows colours.
bool ShowsColours();

/// To be asked when standard output failed.
/// \return Whether it is a pipe that nobody reads any more.
bool ReaderIsGone();

}  // namespace AssetConnector::System
