#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <string>

namespace Session {

/// What is read and compared: objects without an order.
using Json = nlohmann::json;

/// What is written: members in the order in which they were put in.
using OrderedJson = nlohmann::ordered_json;

/// How deep arrays and objects may nest. An asset item takes two levels, so records carry some two thousand
/// levels of sub-items, as the XML texts do.
constexpr std::size_t kDeepestJson = 4200;

/// Parses one JSON value, strictly: a doubled key, a number with a point or an exponent or beyond 64 bits,
/// an unpaired surrogate, invalid UTF-8 and deeper nesting than kDeepestJson are errors. Does not recurse.
/// \throws FormatError with line (of a text of several) and column.
Json ParseJson(const std::string& text);

/// \return Whether one of the keys of the object that the text holds is accepted; whatever else may be wrong
///         with its values. False when the text is not JSON.
bool HasKey(const std::string& text, bool (*accepts)(const std::string& key));

}  // namespace Session
