#pragma once

#include "protocol/check/Shape.h"

#include <string>
#include <string_view>
#include <vector>

namespace Protocol::Checking {

/// \return The letter in lower case, as far as it is one of A to Z.
constexpr char Folded(char unit)
{
    return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit + ('a' - 'A')) : unit;
}

bool EqualsFolded(std::string_view a, std::string_view b);

/// \return Whether what is called so is a password.
bool IsPasswordName(std::string_view name);

/// \return How many letters are missing, too many, others or swapped, whatever their case; a number beyond
///         what counts as near for names that are not alike.
std::size_t Distance(std::string_view a, std::string_view b);

/// \return Whether somebody who wrote the one may have meant the other.
bool IsNear(std::string_view written, std::string_view meant);

/// \return The nearest of the names to what was written; empty when none is near.
std::string_view Nearest(const std::vector<std::string_view>& names, std::string_view written);

/// The names of elements and attributes of a model, and where they belong.
class NameBook
{
public:
    explicit NameBook(const Shape& shape);

    struct Entry
    {
        std::string_view name;
        bool isRead = false;                   ///< In one place at least.
        std::vector<std::string_view> around;  ///< The elements around it or with it, of places that are read
                                               ///< or, without such, that are written.
    };

    /// Each gives null without such a name.
    const Entry* FindElement(std::string_view name) const { return Find(mElements, name); }
    const Entry* FindAttribute(std::string_view name) const { return Find(mAttributes, name); }

    /// Names that are read, near to what was written.
    const Entry* NearestElement(std::string_view written) const { return Nearest(mElements, written); }
    const Entry* NearestAttribute(std::string_view written) const { return Nearest(mAttributes, written); }

private:
    using Entries = std::map<std::string_view, Entry>;
    static void Add(Entries& entries, std::string_view name, std::string_view around, bool isRead);
    static const Entry* Find(const Entries& entries, std::string_view name);
    static const Entry* Nearest(const Entries& entries, std::string_view written);

    Entries mElements;
    Entries mAttributes;
};

/// \return Where a name belongs, the place that is likest to where it stands first: "in fileList".
std::string Belongs(const NameBook::Entry& entry, std::string_view path);

}  // namespace Protocol::Checking
