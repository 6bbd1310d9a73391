#include "protocol/check/Names.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Protocol::Checking {
namespace {

/// Longer names are like none.
constexpr std::size_t kLongestName = 40;

std::size_t MostDistance(std::size_t length)
{
    return std::max<std::size_t>(1, length / 4);
}

std::size_t CommonLength(std::string_view a, std::string_view b)
{
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

}  // namespace

bool EqualsFolded(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Folded(x) == Folded(y); });
}

bool IsPasswordName(std::string_view name)
{
    constexpr std::string_view kName = "password";
    return std::search(name.begin(), name.end(), kName.begin(), kName.end(),
                       [](char x, char y) { return Folded(x) == y; }) != name.end();
}

std::size_t Distance(std::string_view a, std::string_view b)
{
    if (a.size() > kLongestName || b.size() > kLongestName)
        return kLongestName;
    // Three rows of the table of distances between beginnings: i - 2, i - 1 and i letters of a.
    std::array<std::array<std::size_t, kLongestName + 1>, 3> rows{};
    for (std::size_t j = 0; j <= b.size(); ++j)
        rows[0][j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        auto& row = rows[i % 3];
        const auto& before = rows[(i + 2) % 3];
        const auto& twoBefore = rows[(i + 1) % 3];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const char x = Folded(a[i - 1]);
            const char y = Folded(b[j - 1]);
            row[j] = std::min({before[j] + 1, row[j - 1] + 1, before[j - 1] + (x == y ? 0 : 1)});
            if (i > 1 && j > 1 && x == Folded(b[j - 2]) && y == Folded(a[i - 2]))
                row[j] = std::min(row[j], twoBefore[j - 2] + 1);
        }
    }
    return rows[a.size() % 3][b.size()];
}

bool IsNear(std::string_view written, std::string_view meant)
{
    const std::size_t most = MostDistance(meant.size());
    return written.size() <= meant.size() + most && meant.size() <= written.size() + most &&
           Distance(written, meant) <= most;
}

std::string_view Nearest(const std::vector<std::string_view>& names, std::string_view written)
{
    std::string_view nearest;
    for (const std::string_view name : names)
        if (IsNear(written, name) &&
            (nearest.empty() || Distance(written, name) < Distance(written, nearest)))
            nearest = name;
    return nearest;
}

NameBook::NameBook(const Shape& shape)
{
    for (const Slot& slot : shape.Slots()) {
        if (slot.place == nullptr || ElementOf(slot.Path()) == kAnyName)
            continue;
        Add(mElements, ElementOf(slot.Path()), ParentOf(slot.Path()), slot.isRead);
        for (const Place* attribute : slot.attributes)
            Add(mAttributes, AttributeOf(attribute->path), slot.Path(), true);
    }
}

void NameBook::Add(Entries& entries, std::string_view name, std::string_view around, bool isRead)
{
    Entry& entry = entries[name];
    entry.name = name;
    if (isRead && !entry.isRead)
        entry.around.clear();
    if (isRead || !entry.isRead)
        entry.around.push_back(around);
    entry.isRead = entry.isRead || isRead;
}

const NameBook::Entry* NameBook::Find(const Entries& entries, std::string_view name)
{
    const auto found = entries.find(name);
    return found == entries.end() ? nullptr : &found->second;
}

const NameBook::Entry* NameBook::Nearest(const Entries& entries, std::string_view written)
{
    std::vector<std::string_view> names;
    for (const auto& [name, entry] : entries)
        if (entry.isRead)
            names.push_back(name);
    return Find(entries, Checking::Nearest(names, written));
}

std::string Belongs(const NameBook::Entry& entry, std::string_view path)
{
    const auto likeness = [path](std::string_view around) {
        return std::pair(ElementOf(around) == ElementOf(path), CommonLength(around, path));
    };
    const std::string_view likest =
        *std::max_element(entry.around.begin(), entry.around.end(),
                          [&likeness](auto a, auto b) { return likeness(a) < likeness(b); });
    const std::string where = likest.empty() ? "directly in the root" : "in " + std::string(likest);
    return entry.around.size() == 1 ? where : where + ", among others";
}

}  // namespace Protocol::Checking
