#include "protocol/MemberPaths.h"

#include <algorithm>

namespace Protocol {

bool TakeTypeWord(std::string_view& type, std::string_view word)
{
    if (type.substr(0, word.size()) != word)
        return false;
    type.remove_prefix(word.size());
    return true;
}

std::string_view InnerType(std::string_view type)
{
    while (TakeTypeWord(type, "list:") || TakeTypeWord(type, "nullable:")) {
    }
    return type;
}

MemberPlace FindMember(const Model& model, std::string_view path)
{
    MemberPlace place;
    std::string_view recordName = "Message";
    for (std::string_view rest = path; !rest.empty();) {
        const std::string_view name = rest.substr(0, rest.find('.'));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        const Record* const record = FindRecord(model, recordName);
        if (record == nullptr)
            return {};
        const auto found = std::find_if(record->members.begin(), record->members.end(),
                                        [name](const Member& member) { return member.name == name; });
        if (found == record->members.end())
            return {};
        place = {record, &*found};
        recordName = InnerType(found->type);
        if (!TakeTypeWord(recordName, "record:"))
            recordName = {};
    }
    return place;
}

}  // namespace Protocol
