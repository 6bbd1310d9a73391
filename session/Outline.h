#pragma once

#include "session/format/Json.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace Session {

enum class Colour
{
    kNone,
    kBold,
    kDim,
    kRed,
    kGreen,
    kYellow,
    kBlue,
    kMagenta,
    kCyan,
};

/// \return How many bytes the control character at that place of the UTF-8 text takes: 1, 2 for U+0080 to
///         U+009F, 0 where there is none.
std::size_t LengthOfControlAt(std::string_view text, std::size_t at);

/// Prints texts and values for people: indented, coloured when asked for, GUIDs shortened to their two ends.
/// Control characters do not reach the terminal.
class Outline
{
public:
    /// How deep values are shown.
    static constexpr std::size_t kDeepestValue = 24;

    Outline(std::ostream& output, bool coloured) : mOutput(output), mColoured(coloured) {}

    /// Prints a part of a line.
    Outline& Put(Colour colour, const std::string& text);

    void EndLine() { mOutput << '\n'; }

    /// Prints a text of any number of lines, each indented.
    void PutLines(std::size_t indent, Colour colour, const std::string& text);

    /// Prints a value: an object as a member a line, an array as an entry a line.
    void PutValue(std::size_t indent, const OrderedJson& value) { PutValue(indent, value, kDeepestValue); }

private:
    void PutValue(std::size_t indent, const OrderedJson& value, std::size_t levelsLeft);

    /// Begins a line; the first one of an array's entry with a bullet.
    void Indent(std::size_t indent);

    std::ostream& mOutput;
    bool mColoured;
    bool mBullet = false;
};

}  // namespace Session
