#pragma once

#include "protocol/Model.h"

#include <string_view>

namespace Protocol {

/// Where a path of members, as in Place::member, ends.
struct MemberPlace
{
    const Record* record = nullptr;
    const Member* member = nullptr;  ///< Null when there is no such path.
};

MemberPlace FindMember(const Model& model, std::string_view path);

/// \return The member of the message that a path begins with.
inline std::string_view RootMemberOf(std::string_view path)
{
    return path.substr(0, path.find('.'));
}

/// \return The type without "list:" and "nullable:".
std::string_view InnerType(std::string_view type);

/// Takes a word of a type, such as "list:", away. \return Whether it was there.
bool TakeTypeWord(std::string_view& type, std::string_view word);

}  // namespace Protocol
