#pragma once

#include "assetconnector/codec/ElementReader.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace AC {

/// Items in the order of their attribute "order", compared as an unsigned number; of several items with the
/// same one the first stays. An item without the attribute counts as -1, behind every other.
template <class Item>
class ItemsByOrder
{
public:
    /// \return The order of an item element.
    static std::uint32_t OrderOf(const DOMElement* item)
    {
        std::int32_t order = -1;
        GetAttributeInt(item, Vocabulary::kOrder, order);
        return static_cast<std::uint32_t>(order);
    }

    void Add(std::uint32_t order, Item item) { mItems.emplace_back(order, std::move(item)); }

    /// Appends the items to a list and leaves this empty.
    template <class List>
    void MoveTo(List& target)
    {
        const auto less = [](const Entry& a, const Entry& b) { return a.first < b.first; };
        const auto equal = [](const Entry& a, const Entry& b) { return a.first == b.first; };
        if (!std::is_sorted(mItems.begin(), mItems.end(), less))
            std::stable_sort(mItems.begin(), mItems.end(), less);
        const auto end = std::unique(mItems.begin(), mItems.end(), equal);
        std::transform(mItems.begin(), end, std::back_inserter(target),
                       [](Entry& entry) { return std::move(entry.second); });
        mItems.clear();
    }

private:
    using Entry = std::pair<std::uint32_t, Item>;
    std::vector<Entry> mItems;
};

}  // namespace AC
