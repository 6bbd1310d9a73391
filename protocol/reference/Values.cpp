#include "protocol/reference/Values.h"

#include "protocol/reference/Markdown.h"

#include <algorithm>

namespace Protocol::Markdown {
namespace {

bool IsRoot(const Place& place)
{
    return place.path.find('/') == std::string::npos;
}

/// Whether the place stands in a section of its own: it holds others, or stands in what does.
bool HasSection(const Model& model, const Place& place)
{
    const std::string root = place.path.substr(0, place.path.find_first_of("/@"));
    return FindPlace(model, root)->form != kEmpty
               ? !IsRoot(place) || !HoldsValue(place)
               : std::count_if(model.places.begin(), model.places.end(), [&root](const Place& other) {
                     return other.path.compare(0, root.size() + 1, root + '@') == 0;
                 }) > 1;
}

std::string Directions(const Place& place)
{
    if (place.read && place.written)
        return "in, out";
    return place.read ? "in" : "out";
}

std::string Times(const Place& place)
{
    if (!AttributeOf(place.path).empty())
        return "";
    if (place.many)
        return "any";
    return place.most > 1 ? "in: one, out: " + std::to_string(place.most) : "one";
}

std::string MeaningOf(const Place& place, const std::optional<Json>& value)
{
    return value ? Meaning(place, *value) : "";
}

std::string FormLink(const Place& place)
{
    if (HoldsValue(place))
        return '[' + place.form + "](#values)";
    return place.form == kEmpty ? "" : place.form;
}

/// What else is to be known of a place.
std::string About(const Place& place)
{
    const auto names = [&place](const std::vector<std::string>& paths, std::string_view between = ", ") {
        std::vector<std::string> items;
        items.reserve(paths.size());
        for (const std::string& path : paths)
            items.push_back(Code(path.compare(0, ParentOf(place.path).size(), ParentOf(place.path)) == 0 &&
                                         !ParentOf(place.path).empty()
                                     ? path.substr(ParentOf(place.path).size() + 1)
                                     : path));
        return Join(items, "", between);
    };
    std::string text = place.about;
    if (!place.needs.empty())
        text += " Needs " + names(place.needs) + '.';
    if (!place.hiddenBy.empty())
        text += " Not read beside " + names(place.hiddenBy) + " with a value.";
    if (!place.writtenWith.empty() && place.written)
        text += " Written only with " + names(place.writtenWith, " or ") + '.';
    return text;
}

/// Elements that only have one attribute need no row of their own.
bool IsImplied(const Place& place)
{
    return place.form == kEmpty && place.about.empty();
}

std::string PlaceRow(const Place& place, const std::string& name)
{
    return Row({name, FormLink(place), Directions(place), Times(place), MeaningOf(place, place.missing),
                MeaningOf(place, place.empty), MeaningOf(place, place.malformed), About(place)});
}

std::string PlaceTableHead()
{
    return TableHead({"Element", "Value", "", "Times", "Missing", "Empty", "Malformed", ""});
}

/// \return The rows of places that this accepts.
template <class Accepts>
std::string Table(const Model& model, Accepts accepts)
{
    std::string text = PlaceTableHead();
    for (const Place& place : model.places)
        if (!IsImplied(place) && accepts(place)) {
            const std::string name(ElementOf(place.path));
            text += PlaceRow(place, "<a id=\"element-" + name + "\"></a>" + Code(place.path));
        }
    return text + '\n';
}

std::string Section(const Model& model, const Place& section)
{
    std::string text = "### <a id=\"element-" + section.path + "\"></a>" + Code(section.path) + "\n\n" +
                       About(section) + "\n\n" + PlaceTableHead();
    for (const Place& place : model.places) {
        const bool isInside =
            place.path.compare(0, section.path.size(), section.path) == 0 &&
            place.path.size() > section.path.size() &&
            (place.path[section.path.size()] == '/' || place.path[section.path.size()] == '@');
        if (isInside && !IsImplied(place))
            text += PlaceRow(place, Code(place.path[section.path.size()] == '@'
                                             ? place.path
                                             : place.path.substr(section.path.size() + 1)));
    }
    return text + '\n';
}

std::string Escaped(const std::string& text)
{
    return text.empty() ? "empty" : Code(text);
}

}  // namespace

bool HoldsValue(const Place& place)
{
    for (const std::string_view structure : {kBlock, kList, kItem, kProperties, kEmpty})
        if (place.form == structure)
            return false;
    return true;
}

std::string Meaning(const Place& place, const Json& value)
{
    if (value.is_array())
        return value.empty() ? "left out" : value.dump().find("\"\"") == std::string::npos ? "kept" : "empty";
    if (value.is_null())
        return "no time";
    if (place.form == "guid")
        return value.get<std::string>().find_first_not_of("0-") == std::string::npos ? "zero" : "kept";
    if (value.is_string())
        return Escaped(value.get<std::string>());
    if (value.is_boolean())
        return Code(value.get<bool>() ? "true" : "false");
    const auto number = value.get<std::int64_t>();
    if (place.form == "boolean")
        return number < 0 ? "not set" : Code(number == 0 ? "false" : "true");
    if (place.form == "rate")
        return number == 0 ? "no rate" : number == 1 ? "a frame is a tick" : Code(std::to_string(number));
    if (place.form == "clipType")
        return number == 0 ? "no type" : "kept";
    if (place.form == "result")
        return number < 0 ? Code("ERROR") : Code("OK");
    if (place.form == "overwrite")
        return number == 0 ? "does not" : "overwrites";
    if (place.form == "transferType")
        return Code(number == 0 ? "local" : "ftp");
    return number == -1 && place.form == "integer" ? "not set" : Code(std::to_string(number));
}

std::string FormTable(const Model& model)
{
    std::string text = TableHead({"Value", "How it is written", "Words"});
    for (const Form& form : model.forms) {
        std::vector<std::string> words;
        for (const std::string& word : form.words)
            words.push_back(Code(word));
        text += Row({form.name, form.about, Join(words)});
    }
    return text + '\n';
}

std::string ElementTables(const Model& model)
{
    const auto isHeader = [](const Place& place) { return place.member.compare(0, 7, "header.") == 0; };
    std::string text = "### The header\n\n" + Table(model, isHeader);
    text += "### Single values\n\nIn the order in which notifications hold them, behind everything else.\n\n";
    text += Table(model, [&](const Place& place) {
        return place.written && !isHeader(place) && !HasSection(model, place);
    });
    text += "Of requests alone:\n\n";
    text += Table(model, [&](const Place& place) { return !place.written && !HasSection(model, place); });
    for (const Place& place : model.places)
        if (IsRoot(place) && AttributeOf(place.path).empty() && HasSection(model, place))
            text += Section(model, place);
    return text;
}

}  // namespace Protocol::Markdown
