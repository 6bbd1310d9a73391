#pragma once

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

/// The operations that a header of forwarders names, as its text says.
struct ForwardedOperations
{
    explicit ForwardedOperations(const std::string& header)
    {
        std::ifstream file(TEST_DATA "/../reference_host/" + header);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        const std::regex call(R"((return\s+|=\s*)?(this->)?Pass\(\s*"([^"]+)\")");
        for (std::sregex_iterator match(text.begin(), text.end(), call), end; match != end; ++match) {
            all.insert((*match)[3]);
            if (!(*match)[1].matched)
                actions.insert((*match)[3]);
        }
    }

    std::set<std::string> all;
    std::set<std::string> actions;  ///< Those that give nothing back.
};
