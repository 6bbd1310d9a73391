#include "protocol/generator/Places.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/message/ResultNames.h"
#include "protocol/facts/Forms.h"
#include "protocol/facts/PlaceFacts.h"
#include "protocol/generator/Values.h"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>

namespace Protocol::Generator {
namespace {

const MemberFact& FindMember(const std::string& path, const char* place)
{
    for (const MemberFact& member : AllMembers())
        if (member.path == path)
            return member;
    throw std::runtime_error("protocol/facts/PlaceFacts.cpp: the row " + std::string(place) +
                             " names no member of the records: " + path);
}

void RequireKnownForm(const PlaceFact& fact)
{
    for (const std::string_view structure : {kBlock, kList, kItem, kProperties, kEmpty})
        if (structure == fact.form)
            return;
    for (const FormFact& form : kFormFacts)
        if (std::string_view(form.name) == fact.form)
            return;
    throw std::runtime_error("protocol/facts/PlaceFacts.cpp: the row " + std::string(fact.path) +
                             " has the form " + fact.form + ", which protocol/facts/Forms.h does not know");
}

/// \return A GUID that no other place has.
std::string GuidOfRow(std::size_t row)
{
    std::string digits = std::to_string(row);
    digits.insert(0, 12 - digits.size(), '0');
    return "0f8b2c1e-5d3a-4b6f-9e7c-" + digits;
}

Place FromFact(const PlaceFact& fact, std::size_t row)
{
    RequireKnownForm(fact);
    Place place;
    place.path = fact.path;
    place.form = fact.form;
    place.most = fact.most;
    place.member = fact.member;
    place.also = Words(fact.also);
    place.needs = Words(fact.needs);
    place.hiddenBy = Words(fact.hiddenBy);
    place.writtenWith = Words(fact.writtenWith);
    place.sample = place.form == "guid" ? GuidOfRow(row) : fact.sample;
    place.about = fact.about;
    std::vector<std::string> members = place.also;
    if (!place.member.empty())
        members.assign(1, place.member);
    for (const std::string& path : members) {
        const MemberFact& member = FindMember(path, fact.path);
        place.read = place.read || member.read;
        place.written = place.written || member.written;
    }
    if (fact.used != Used::kByMember) {
        place.read = fact.used != Used::kWritten;
        place.written = fact.used != Used::kRead;
    }
    return place;
}

/// What follows from paths: the rate beside a time, the list that a nested one is like.
void AddRelations(const std::vector<Place>& facts, Place& place)
{
    if (IsNested(place.path))
        place.sameAs = ElementOf(place.path);
    for (const Place& other : facts)
        if (place.form == "time" && other.form == "rate" && ParentOf(other.path) == ParentOf(place.path))
            place.countsAt = other.path;
}

/// Members that texts carry and that no row names.
void RequireRows(const std::vector<Place>& places)
{
    std::set<std::string> named;
    for (const Place& place : places) {
        named.insert(place.member);
        named.insert(place.also.begin(), place.also.end());
    }
    for (const MemberFact& member : AllMembers()) {
        const bool holdsMembers =
            std::any_of(named.begin(), named.end(), [prefix = member.path + '.'](const std::string& name) {
                return name.compare(0, prefix.size(), prefix) == 0;
            });
        if ((member.read || member.written) && !holdsMembers && named.count(member.path) == 0)
            throw std::runtime_error("protocol/facts/PlaceFacts.cpp has no row for the member " +
                                     member.path +
                                     ", which texts carry by src/assetconnector/message/Description.h");
    }
}

/// The names of what each element holds, in the order in which it is written.
using ChildOrder = std::map<std::string, std::vector<std::string>>;

void MergeOrder(const Node& node, const std::string& path, ChildOrder& order)
{
    std::vector<std::string>& names = order[path];
    std::size_t at = 0;
    for (const Node& child : node.children) {
        const std::string name = ElementOf(path) == "namespace" ? "*" : child.name;
        const auto known = std::find(names.begin(), names.end(), name);
        if (known == names.end())
            names.insert(names.begin() + static_cast<std::ptrdiff_t>(at++), name);
        else
            at = static_cast<std::size_t>(known - names.begin()) + 1;
    }
    for (const Node& child : node.children) {
        const std::string childPath =
            (path.empty() ? "" : path + '/') + (ElementOf(path) == "namespace" ? "*" : child.name);
        if (!IsNested(childPath))
            MergeOrder(child, childPath, order);
    }
}

/// \return The order in which everything is written.
ChildOrder OrderOfWriting()
{
    const std::string text = AC::ACMessageEncoder::EncodeUTF8(Filled<AC::ACMessage>(), AC::kNotificationRoot);
    ChildOrder order;
    MergeOrder(ReadNode(text), "", order);
    return order;
}

/// Puts places into the order in which they are written, and those that are only read behind them; adds the
/// elements that are there for an attribute alone.
class Arrangement
{
public:
    explicit Arrangement(const std::vector<Place>& facts) : mFacts(facts), mOrder(OrderOfWriting())
    {
        AddChildren("");
    }

    std::vector<Place> Take() { return std::move(mPlaces); }

private:
    static std::string ElementPath(const Place& place) { return place.path.substr(0, place.path.find('@')); }

    void AddChildren(const std::string& path)
    {
        const std::string prefix = path.empty() ? "" : path + '/';
        std::vector<std::string> names = mOrder[path];
        for (const Place& fact : mFacts) {
            const std::string name(ElementOf(fact.path));
            if (ParentOf(fact.path) == path && std::find(names.begin(), names.end(), name) == names.end())
                names.push_back(name);
        }
        for (const std::string& name : names)
            AddElement(prefix + name);
    }

    void AddElement(const std::string& path)
    {
        const std::size_t at = mPlaces.size();
        Place element;
        element.path = path;
        element.form = kEmpty;
        mPlaces.push_back(element);
        bool isKnown = false;
        for (const Place& fact : mFacts) {
            if (ElementPath(fact) != path)
                continue;
            isKnown = true;
            if (fact.path == path)
                mPlaces[at] = fact;
            else
                mPlaces.push_back(fact);
        }
        if (!isKnown)
            throw std::runtime_error("protocol/facts/PlaceFacts.cpp has no row for the element " + path +
                                     ", which notifications carry");
        if (!IsNested(path))
            AddChildren(path);
        // What holds others is used where one of them is.
        for (std::size_t i = at + 1; i < mPlaces.size(); ++i) {
            mPlaces[at].read = mPlaces[at].read || mPlaces[i].read;
            mPlaces[at].written = mPlaces[at].written || mPlaces[i].written;
        }
        Place& place = mPlaces[at];
        const Place* const parent = Find(ParentOf(path));
        place.many = place.form == kItem || place.form == kProperties || ElementOf(path) == "*" ||
                     (parent != nullptr && parent->form == kList);
    }

    const Place* Find(std::string_view path) const
    {
        for (const Place& place : mPlaces)
            if (place.path == path)
                return &place;
        return nullptr;
    }

    const std::vector<Place>& mFacts;
    ChildOrder mOrder;
    std::vector<Place> mPlaces;
};

const Place& At(const std::vector<Place>& places, std::string_view path)
{
    for (const Place& place : places)
        if (place.path == path)
            return place;
    throw std::runtime_error("protocol/facts/PlaceFacts.cpp has no row " + std::string(path));
}

bool HoldsValue(const Place& place)
{
    for (const std::string_view structure : {kBlock, kList, kItem, kProperties, kEmpty})
        if (structure == place.form)
            return false;
    return true;
}

Values Decode(const Node& request)
{
    AC::ACMessage message;
    if (!AC::ACMessageDecoder::DecodeXMLString(ferrite::utility::UTF8to16(request.Text()), message))
        throw std::runtime_error("this does not decode: " + request.Text());
    return ValuesOf(message);
}

/// \return The other value of a boolean, the sample of anything else.
std::string_view OppositeOf(const Place& place)
{
    if (place.form != "boolean")
        return place.sample;
    return place.sample == "true" ? "false" : "true";
}

/// \return The elements among which that of this path stands.
std::vector<Node>& SiblingsOf(Node& request, std::string_view path)
{
    const std::string_view parent = ParentOf(path);
    if (parent.empty())
        return request.children;
    for (Node& node : SiblingsOf(request, parent))
        if (node.name == ElementOf(parent))
            return node.children;
    throw std::logic_error("the element around " + std::string(path) + " is not there");
}

/// Of two elements where one may stand the first counts, whatever they hold.
void RequireFirstCounts(const std::vector<Place>& places, const Place& place, const Node& without)
{
    Node filled = without;
    for (const Place& inner : places)
        if (inner.read && inner.form != kEmpty &&
            (inner.path == place.path ||
             inner.path.compare(0, place.path.size() + 1, place.path + '/') == 0 ||
             inner.path.compare(0, place.path.size() + 1, place.path + '@') == 0))
            Put(filled, inner.path, inner.sample);
    Node second;
    second.name = ElementOf(place.path);
    Node empty = without;
    SiblingsOf(empty, place.path).push_back(second);
    Node behind = filled;
    SiblingsOf(behind, place.path).push_back(second);
    Node before = filled;
    std::vector<Node>& siblings = SiblingsOf(before, place.path);
    siblings.insert(siblings.begin(), second);
    if (Decode(behind) != Decode(filled) || Decode(before) != Decode(empty))
        throw std::runtime_error("of two elements " + place.path + " it is not the first that counts");
}

/// Finds out what a place reads as, and that it changes the members that its row names and no others.
void Measure(const std::vector<Place>& places, Place& place)
{
    Node without = Request();
    PutNeeds(places, without, place);
    PutAround(places, without, place.path);
    if (!place.many && AttributeOf(place.path).empty())
        RequireFirstCounts(places, place, without);
    const auto with = [&](std::string_view value) {
        Node request = without;
        Put(request, place.path, value);
        return Decode(request);
    };
    const Values missing = Decode(without);
    std::set<std::string> changed;
    for (const std::string_view value : {std::string_view(place.sample), OppositeOf(place)})
        for (const std::string& member : Differences(missing, with(value)))
            changed.insert(member);
    std::set<std::string> named(place.also.begin(), place.also.end());
    named.insert(place.member);
    for (const std::string& member : changed)
        if (named.count(member) == 0)
            throw std::runtime_error("protocol/facts/PlaceFacts.cpp: " + place.path + " also changes " +
                                     member);
    if (missing.count(place.member) != 0 && FindMember(place.member, place.path.c_str()).read &&
        changed.count(place.member) == 0 && HoldsValue(place))
        throw std::runtime_error("protocol/facts/PlaceFacts.cpp: " + place.path + " does not change " +
                                 place.member);
    for (const std::string& other : place.hiddenBy) {
        Node hidden = without;
        Put(hidden, other, At(places, other).sample);
        Node both = hidden;
        Put(both, place.path, place.sample);
        if (!Differences(Decode(hidden), Decode(both)).empty())
            throw std::runtime_error("protocol/facts/PlaceFacts.cpp: " + place.path + " is not hidden by " +
                                     other);
    }
    if (!HoldsValue(place) || missing.count(place.member) == 0 ||
        !FindMember(place.member, place.path.c_str()).read)
        return;
    place.missing = missing.at(place.member);
    place.empty = with("").at(place.member);
    for (const FormFact& form : kFormFacts)
        if (form.name == place.form && *form.malformed != '\0')
            place.malformed = with(form.malformed).at(place.member);
}

std::vector<int> ValuesOfResults(const FormFact& form)
{
    std::vector<int> values;
    const std::vector<std::string> words = Words(form.words);
    for (const std::string& code : Words(form.codes)) {
        values.push_back(static_cast<int>(std::stoul(code, nullptr, 16)));
        const std::string name = ferrite::utility::UTF16to8(AC::ResultName(values.back()));
        if (values.size() > words.size() || name != words[values.size() - 1])
            throw std::runtime_error("protocol/facts/Forms.h: a code of a result is that of " + name);
    }
    return values;
}

}  // namespace

std::vector<std::string> Words(std::string_view text)
{
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        if (!word.empty())
            words.emplace_back(word);
        text.remove_prefix(std::min(word.size() + 1, text.size()));
    }
    return words;
}

Node Request()
{
    Node request;
    request.name = ferrite::utility::UTF16to8(AC::kMessageRoot);
    return request;
}

void PutAround(const std::vector<Place>& places, Node& request, std::string_view path)
{
    const std::string_view element = path.substr(0, path.find('@'));
    const bool isSaid = element != path && At(places, element).form != kEmpty;
    const std::string_view around = isSaid ? element : ParentOf(path);
    if (!around.empty())
        Put(request, around, "");
}

void PutNeeds(const std::vector<Place>& places, Node& request, const Place& place)
{
    for (const std::string& path : place.needs)
        Put(request, path, At(places, path).sample);
}

std::vector<int> ValuesOfWords(const std::vector<Place>& places, const FormFact& form)
{
    if (*form.codes != '\0')
        return ValuesOfResults(form);
    std::vector<int> values;
    for (const Place& place : places) {
        if (place.form != form.name || !place.read || !place.missing || !place.missing->is_number())
            continue;
        for (const std::string& word : Words(form.words)) {
            Node request = Request();
            PutNeeds(places, request, place);
            Put(request, place.path, word);
            values.push_back(Decode(request).at(place.member).get<int>());
        }
        break;
    }
    return values;
}

std::vector<Place> MakePlaces()
{
    std::vector<Place> facts;
    for (std::size_t i = 0; i < kPlaceFactCount; ++i)
        facts.push_back(FromFact(kPlaceFacts[i], i + 1));
    for (Place& place : facts)
        AddRelations(facts, place);
    RequireRows(facts);
    std::vector<Place> places = Arrangement(facts).Take();
    for (Place& place : places)
        if (place.read)
            Measure(places, place);
    return places;
}

}  // namespace Protocol::Generator
