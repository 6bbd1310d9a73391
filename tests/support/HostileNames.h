#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// \return The name of that number, below 4,096, of those with one hash in all of the XML library's
///         tables: there "ag" and "bA" have the same.
inline std::string NameOfHash(std::size_t number)
{
    std::string name;
    for (unsigned bit = 0; bit < 12; ++bit)
        name += (number >> bit & 1U) == 0 ? "ag" : "bA";
    return name;
}

/// \return The first of them, all with one beginning.
inline std::vector<std::string> NamesOfHash(std::size_t count, const std::string& beginning = "")
{
    std::vector<std::string> names;
    while (names.size() < count)
        names.push_back(beginning + NameOfHash(names.size()));
    return names;
}

/// \return Names with a number each.
inline std::vector<std::string> Numbered(const std::string& name, std::size_t count)
{
    std::vector<std::string> names;
    while (names.size() < count)
        names.push_back(name + std::to_string(names.size()));
    return names;
}

/// \return An empty element for each name.
inline std::string ElementsOf(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
        text += "<" + name + "/>";
    return text;
}

/// \return An attribute for each name.
inline std::string AttributesOf(const std::vector<std::string>& names, const std::string& value = "=''")
{
    std::string text;
    for (const std::string& name : names)
        text += " " + name + value;
    return text;
}
