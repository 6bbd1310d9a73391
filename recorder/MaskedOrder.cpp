#include "recorder/MaskedOrder.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace Recording {
namespace {

struct Element
{
    std::string_view key;
    std::string_view text;
};

/// \return The elements of which the text consists, none of them with attributes; nothing for any other text.
/// \param byName By which they are to be in order, otherwise by what they hold.
std::vector<Element> ElementsOf(std::string_view text, bool byName)
{
    std::vector<Element> elements;
    while (!text.empty()) {
        const std::size_t nameEnd = text.find_first_of("/>");
        if (text.front() != '<' || nameEnd == std::string_view::npos)
            return {};
        const std::string_view name = text.substr(1, nameEnd - 1);
        std::size_t end = nameEnd + 2;
        std::string_view content;
        if (text[nameEnd] == '>') {
            const std::string closing = "</" + std::string(name) + '>';
            const std::size_t close = text.find(closing, nameEnd);
            if (close == std::string_view::npos)
                return {};
            content = text.substr(nameEnd + 1, close - nameEnd - 1);
            end = close + closing.size();
        }
        if (end > text.size())
            return {};
        elements.push_back({byName ? name : content, text.substr(0, end)});
        text.remove_prefix(end);
    }
    return elements;
}

void SortWithin(std::string& xml, std::string_view opening, std::string_view closing, bool byName)
{
    std::size_t at = 0;
    while ((at = xml.find(opening, at)) != std::string::npos) {
        const std::size_t begin = xml.find('>', at) + 1;
        const std::size_t end = xml.find(closing, at);
        if (begin == 0 || end == std::string::npos)
            return;
        at = end;  // they do not nest; hostile ones cost no more
        if (begin > end || xml[begin - 2] == '/')
            continue;
        std::vector<Element> elements = ElementsOf(std::string_view(xml).substr(begin, end - begin), byName);
        std::stable_sort(elements.begin(), elements.end(),
                         [](const Element& a, const Element& b) { return a.key < b.key; });
        std::string sorted;
        for (const Element& each : elements)
            sorted += each.text;
        if (!elements.empty())
            xml.replace(begin, end - begin, sorted);
    }
}

}  // namespace

std::string InMaskedOrder(std::string xml)
{
    SortWithin(xml, "<keywords>", "</keywords>", false);
    SortWithin(xml, "<namespace", "</namespace>", true);
    return xml;
}

}  // namespace Recording
