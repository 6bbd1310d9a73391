#pragma once

#include <xercesc/dom/DOMElement.hpp>

#include <cstddef>

namespace AC {

/// A place in a text, as people count: from 1, columns in UTF-16 units. A line ends at LF, CR LF or a CR
/// alone; a byte order mark in front is no unit.
struct TextPlace
{
    std::size_t line = 1;
    std::size_t column = 1;
};

/// Is told of the elements of a text while MessageParser parses it.
class ParseObserver
{
public:
    virtual ~ParseObserver() = default;

    /// Called once for each element, in document order. The element has its attributes and its parent, but no
    /// children yet.
    /// \param place Of the < that begins it.
    /// What it throws ends the parse and reaches the caller.
    virtual void OnElement(const xercesc::DOMElement* element, const TextPlace& place) = 0;
};

}  // namespace AC
