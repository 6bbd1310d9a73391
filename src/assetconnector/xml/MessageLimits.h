#pragma once

#include <cstddef>

/// What a panel's text may hold. Any honest text holds less; one that holds more does not parse.
namespace AC::MessageLimits {

/// How deep elements may nest; the root has depth 1.
constexpr std::size_t kDeepestElement = 4096;

/// How many attributes an element may have: the scanner searches for each among the others.
constexpr std::size_t kMostAttributes = 256;

/// How many different names of elements and different names of attributes a text may hold together: each is
/// searched for in tables, of which the DOM's does not grow.
constexpr std::size_t kMostNames = 12000;

/// How many of them may share a bucket of such a table: several times what chance gives them, and few
/// enough for a text that was made to have nothing else.
constexpr std::size_t kMostNamesOfHash = 256;

}  // namespace AC::MessageLimits
