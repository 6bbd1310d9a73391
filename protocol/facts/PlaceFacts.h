#pragma once

#include <cstddef>

namespace Protocol {

/// Who uses a place. Most follow from the member that it carries.
enum class Used
{
    kByMember,
    kRead,
    kWritten,
    kBoth,
};

/// What a place in a text is, as far as code cannot tell it: a row for each element that holds elements, and
/// for each text or attribute with a value. What the missing, the empty and the malformed read as, where
/// notifications hold them, and which requests read them is measured.
struct PlaceFact
{
    const char* path;  ///< Elements below the root, then the attribute: "fileList/filePath@path".
    const char* form;  ///< A name of Forms.h, or what Place::form says of those without a value.
    /// The member that it carries, with those around it; empty for what orders, groups or measures others.
    const char* member;
    const char* sample;  ///< A value, where it carries one; a GUID gets one of its own.
    const char* about;
    // Of these several may be named, separated by blanks.
    const char* also = "";         ///< Members that change with it, where their elements are there.
    const char* needs = "";        ///< Places without which the host does not mind it.
    const char* writtenWith = "";  ///< Places one of which has a value where it is written.
    Used used = Used::kByMember;
    int most = 1;               ///< How often it stands in a notification.
    const char* hiddenBy = "";  ///< Places that the host takes in its stead where they have a value.
    const char* second = "";    ///< What examples have in a second item.
};

/// The rows, and how many there are.
extern const PlaceFact* const kPlaceFacts;
extern const std::size_t kPlaceFactCount;

}  // namespace Protocol
