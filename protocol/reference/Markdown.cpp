#include "protocol/reference/Markdown.h"

namespace Protocol::Markdown {

std::string Code(std::string_view text)
{
    return std::string("`").append(text).append("`");
}

std::string Join(const std::vector<std::string>& items, std::string_view fallback, std::string_view between)
{
    std::string text;
    for (const std::string& item : items)
        text.append(text.empty() ? "" : between).append(item);
    return text.empty() ? std::string(fallback) : text;
}

std::string EventLink(const Event& event)
{
    const std::string name(ShortName(event.identifier));
    return "[" + Code(name) + "](#" + event.kind + '-' + name + ')';
}

std::string EventLink(const Model& model, const std::string& identifier)
{
    const Event* const event = FindEvent(model, identifier);
    return event == nullptr ? Code(identifier) : EventLink(*event);
}

std::string ElementLink(std::string_view path)
{
    const std::string name(path.substr(0, path.find_first_of("/@")));
    return "[" + Code(name) + "](#element-" + name + ')';
}

std::string Row(std::initializer_list<std::string> cells)
{
    std::string text = "|";
    for (std::string cell : cells) {
        for (std::size_t at = cell.find('|'); at != std::string::npos; at = cell.find('|', at + 2))
            cell.insert(at, 1, '\\');
        text.append(cell.empty() ? " |" : ' ' + cell + " |");
    }
    return text + '\n';
}

std::string TableHead(std::initializer_list<std::string> titles)
{
    std::string rule = "|";
    for (std::size_t i = 0; i < titles.size(); ++i)
        rule += "---|";
    return Row(titles) + rule + '\n';
}

std::string ConnectorTitle(std::string_view connector)
{
    return connector == "mediaCollection" ? "media collection" : std::string(connector);
}

}  // namespace Protocol::Markdown
