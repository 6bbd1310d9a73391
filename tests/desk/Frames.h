#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>

/// The frames of a page.
namespace PageFrames {

inline std::string Hello(const std::string& kind)
{
    return nlohmann::json{{"hello", {{"kind", kind}, {"session", nullptr}, {"heard", 0}}}}.dump();
}

inline std::string HelloAgain(const std::string& kind, const std::string& session, std::uint64_t heard)
{
    return nlohmann::json{{"hello", {{"kind", kind}, {"session", session}, {"heard", heard}}}}.dump();
}

inline std::string Raise(const std::string& name, const std::string& xml, std::uint64_t number)
{
    return nlohmann::json{{"raise", "com.velmo.browser.event." + name}, {"xml", xml}, {"number", number}}
        .dump();
}

}  // namespace PageFrames
