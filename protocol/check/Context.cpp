#include "protocol/check/Context.h"

#include <algorithm>

namespace Protocol::Checking {
namespace {

/// \return Whether the path leads to something in the element of the other one.
bool IsWithin(std::string_view path, std::string_view around)
{
    const std::string_view rest = path.substr(std::min(around.size(), path.size()));
    return around.empty() || (path.substr(0, around.size()) == around &&
                              (rest.substr(0, 1) == "/" || rest.substr(0, 1) == "@"));
}

}  // namespace

void Context::Add(std::size_t element, const Remark& remark, const std::string& name)
{
    const Slot* const slot = slots[element];
    std::string path(slot == nullptr ? std::string_view() : slot->Path());
    path += path.empty() && name.substr(0, 1) == "/" ? name.substr(1) : name;
    isReported[element] = true;
    report.Add(At(element).place, path, remark);
}

const std::string* Context::FindValue(std::size_t element, std::string_view path) const
{
    while (!IsWithin(path, slots[element]->Path()))
        element = At(element).parent;
    const std::string_view elements = path.substr(0, path.find('@'));
    for (std::size_t done = slots[element]->Path().size(); done < elements.size();) {
        const std::size_t begin = done == 0 ? 0 : done + 1;
        done = std::min(elements.find('/', begin), elements.size());
        element = FindChild(tree, element, std::string(elements.substr(begin, done - begin)));
        if (element == kNoElement)
            return nullptr;
    }
    if (!AttributeOf(path).empty())
        return FindAttribute(At(element), std::string(AttributeOf(path)));
    return At(element).value ? &*At(element).value : nullptr;
}

}  // namespace Protocol::Checking
