#pragma once

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

/// The operations that a header of forwarders names, as its text says.
struct ForwardedOperations
{
    explicit ForwardedOperations(const std::string& header)
    {
        std::ifstream file(TEST_DATA "/../reference_host/" + header);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        constexpr std::string_view kCall = "Pass(";
        for (std::size_t at = text.find(kCall); at != std::string::npos; at = text.find(kCall, at + 1)) {
            const std::size_t name = text.find_first_not_of(" \n", at + kCall.size());
            if (text[name] != '"')
                continue;
            const std::size_t begin = text.find_last_of(";{", at);  // of the statement
            const std::string_view before = std::string_view(text).substr(begin, at - begin);
            const bool givesBack =
                before.find("return") != std::string_view::npos || before.find('=') != std::string_view::npos;
            const std::string operation = text.substr(name + 1, text.find('"', name + 1) - name - 1);
            all.insert(operation);
            if (!givesBack)
                actions.insert(operation);
        }
    }

    std::set<std::string> all;
    std::set<std::string> actions;  ///< Those that give nothing back.
};
