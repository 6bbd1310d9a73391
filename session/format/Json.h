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

/// How deep lines are indented at most: deep values would be blanks more than anything else.
constexpr std::size_t kDeepestIndent = 64;

/// Parses one JSON value, strictly: a doubled key, a number with a point or an exponent or beyond 64 bits,
/// an unpaired surrogate, invalid UTF-8 and deeper nesting than kDeepestJson are errors. Does not recurse.
/// \throws FormatError with line (of a text of several) and column.
Json ParseJson(const std::string& text);

/// \return The text of a value: on one line, or with each member and entry on a line of its own, indented by
///         so many spaces a level, at most kDeepestIndent levels. Unlike the library's own form it does not
///         recurse.
std::string DumpJson(const Json& value, std::size_t indent = 0);
std::string DumpJson(const OrderedJson& value, std::size_t indent = 0);

/// \return Whether one of the keys of the object that the text holds is accepted; whatever else may be wrong
///         with its values. False when the text is not JSON.
/// \throws FormatError for a NUL byte or a byte order mark.
bool HasKey(const std::string& text, bool (*accepts)(const std::string& key));

}  // namespace Session
