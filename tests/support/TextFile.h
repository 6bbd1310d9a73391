#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// \return What the file holds.
inline std::string TextOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
