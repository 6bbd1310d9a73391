#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

/// What xmllint said nothing of, as when it does not take the schema.
constexpr const char* kNotValidated = "not validated";

/// Validates texts by a schema with one run of xmllint.
/// \param option "--schema" or "--relaxng".
/// \return For each text what is wrong with it, empty when it is valid.
inline std::vector<std::string> Complaints(const char* option, const std::string& schema,
                                           const std::vector<std::string>& texts)
{
    std::vector<std::string> complaints(texts.size(), kNotValidated);
    std::string folder = testing::TempDir() + "xmllint-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr)
        return complaints;
    std::ofstream(folder + "/schema", std::ios::binary) << schema;
    std::string command = "cd '" + folder + "' && xmllint --huge --noout " + option + " schema";
    for (std::size_t i = 0; i < texts.size(); ++i) {
        std::ofstream(folder + '/' + std::to_string(i), std::ios::binary) << texts[i];
        command += ' ' + std::to_string(i);
    }
    if (std::system((command + " >verdicts 2>&1").c_str()) == -1)
        return complaints;
    std::ifstream verdicts(folder + "/verdicts");
    for (std::string line; std::getline(verdicts, line);) {  // "7 validates", "7:1: element ..."
        const std::size_t end = line.find_first_not_of("0123456789");
        if (end == 0 || end == std::string::npos || (line[end] != ' ' && line[end] != ':'))
            continue;
        std::string& complaint = complaints.at(std::stoul(line));
        complaint = line.substr(end) == " validates" ? "" : complaint + '\n' + line;
    }
    std::filesystem::remove_all(folder);
    return complaints;
}
