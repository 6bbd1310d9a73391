// The model of the protocol against the library, by other ways than the one that made it: what is played as a
// session, what the encoder leaves out, the names in the sources.

#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/xml/MessageParser.h"
#include "protocol/Comparison.h"
#include "protocol/Model.h"
#include "session/PlainReplay.h"
#include "session/ValueReader.h"
#include "tests/support/HostTest.h"
#include "tests/support/MemberWalk.h"
#include "tests/support/TextFile.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

namespace {

using Protocol::Model;
using Protocol::Place;
using Protocol::ThisModel;
using Session::Json;

/// \return What one request does at one connector, as the model names actions.
std::set<std::string> ActionsOf(const std::string& connector, const std::string& request,
                                const std::string& text)
{
    const Json inputs[] = {
        {{"host",
          {{"paths", {{"/media/card/A001.mov", "file"}, {"/media/backup", "folder"}}},
           {"xmpPaths", {"/media/card/A001.mov"}}}}},
        {{"register", true}},
        {{"create", connector}},
        {{"panel", request}, {"data", text}},
    };
    std::stringstream session;
    for (const Json& input : inputs)
        session << input.dump() << '\n';
    std::stringstream output;
    Session::PlainReplay replay(output);
    Session::PlaySession(session, Session::Style::kSession, replay);
    std::set<std::string> actions;
    for (std::string line; std::getline(output, line);) {
        const Json effect = Json::parse(line);
        for (const auto& [key, kind] : {std::pair("dispatcher", "dispatcher"),
                                        std::pair("notification", "reply"), std::pair("post", "post")})
            if (effect.contains(key))
                actions.insert(kind + (' ' + effect[key].get<std::string>()));
    }
    return actions;
}

/// \return The text without the element or the attribute of that place; a text has a line for each element.
std::string Without(const std::string& text, const std::string& path)
{
    const std::string element(Protocol::ElementOf(path));
    const std::string attribute(Protocol::AttributeOf(path));
    std::size_t at = text.find('<' + element);
    while (std::isalnum(static_cast<unsigned char>(text[at + element.size() + 1])) != 0)
        at = text.find('<' + element, at + 1);
    const std::size_t line = text.rfind('\n', at);
    if (!attribute.empty()) {
        const std::size_t begin = text.find(' ' + attribute + '=', at);
        return text.substr(0, begin) + text.substr(text.find('"', text.find('"', begin) + 1) + 1);
    }
    const std::size_t end = text.find('\n', at);
    const std::string indent = text.substr(line, at - line);
    const bool isOneLine = text.compare(end - 2, 2, "/>") == 0 || text.find("</" + element, at) < end;
    const std::size_t last = isOneLine ? end : text.find('\n', text.find(indent + "</" + element, at) + 1);
    return text.substr(0, line) + text.substr(last);
}

TEST(ProtocolModel, SaysWhatRequestsDoAndNeed)
{
    for (const Protocol::Event& event : ThisModel().events)
        for (const Protocol::Handling& handling : event.handling) {
            SCOPED_TRACE(event.identifier + " at " + handling.connector);
            std::set<std::string> expected;
            for (const Protocol::Action& action : handling.does)
                if (action.kind != "host")
                    expected.insert(action.kind + ' ' + action.name);
            EXPECT_EQ(ActionsOf(handling.connector, event.identifier, event.example), expected);
            for (const std::string& path : handling.needs)
                EXPECT_TRUE(
                    ActionsOf(handling.connector, event.identifier, Without(event.example, path)).empty())
                    << "without " << path;
            if (handling.handled && handling.needs.empty()) {
                EXPECT_FALSE(ActionsOf(handling.connector, event.identifier, "<browserMessage/>").empty());
            }
        }
}

/// \return Every place with a value in the text, and the value.
std::set<std::pair<std::string, std::string>> ValuesIn(const AC::ACMessage& message)
{
    const UTF16String text = AC::ACMessageEncoder::EncoderACMessage(message, AC::kNotificationRoot);
    AC::MessageParser parser;
    std::set<std::pair<std::string, std::string>> values;
    const auto visit = [&values](const auto& self, const xercesc::DOMNode* node,
                                 const std::string& path) -> void {
        for (const xercesc::DOMNode* child = node->getFirstChild(); child != nullptr;
             child = child->getNextSibling()) {
            if (child->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
                values.emplace(path, Narrow(child->getNodeValue()));
                continue;
            }
            const std::string name =
                Protocol::ElementOf(path) == "namespace" ? "*" : Narrow(child->getNodeName());
            const bool isNested = path.compare(0, name.size() + 1, name + '/') == 0;
            const std::string childPath = isNested ? name : (path.empty() ? "" : path + '/') + name;
            values.emplace(isNested ? path + '/' + name : childPath, "");
            for (XMLSize_t i = 0; i < child->getAttributes()->getLength(); ++i)
                values.emplace(childPath + '@' + Narrow(child->getAttributes()->item(i)->getNodeName()),
                               Narrow(child->getAttributes()->item(i)->getNodeValue()));
            self(self, child, childPath);
        }
    };
    visit(visit, parser.Parse(text)->getDocumentElement(), "");
    return values;
}

bool IsAround(const std::string& path, const std::string& inner)
{
    return inner.size() > path.size() && inner.compare(0, path.size(), path) == 0 &&
           std::string("/@.").find(inner[path.size()]) != std::string::npos;
}

/// \return Whether a place may change with a member: it carries the member, or what changes with it, or is
///         only written with what does; or it stands around or inside of such a place.
bool IsOf(const Place& place, const std::string& member)
{
    const auto isIt = [&member](const std::string& name) {
        return name == member || IsAround(name, member) || IsAround(member, name);
    };
    const auto holds = [](const std::vector<std::string>& names, const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    return std::any_of(ThisModel().places.begin(), ThisModel().places.end(), [&](const Place& other) {
        const bool moves =
            std::any_of(other.also.begin(), other.also.end(), [&place](const std::string& name) {
                return name == place.member || IsAround(name, place.member);
            });
        if (isIt(other.member) && moves)
            return true;
        const bool isRelated = other.path == place.path || IsAround(other.path, place.path) ||
                               IsAround(place.path, other.path) || holds(place.writtenWith, other.path);
        return isRelated && (isIt(other.member) || std::any_of(other.also.begin(), other.also.end(), isIt));
    });
}

using ProtocolModelTest = HostTest;

/// Each member of a full record in turn is put back to its construction value.
TEST_F(ProtocolModelTest, SaysWhereNotificationsCarryMembers)
{
    const auto everything = Session::ValueReader::Read<AC::ACMessage>(
        Session::ParseJson(TextOf(TEST_DATA "/records/everything.json")));
    const auto all = ValuesIn(everything);
    std::map<std::string, bool> isWritten;
    for (std::size_t at = 0, count = 1; at < count; ++at) {
        AC::ACMessage changed = everything;
        std::string member;
        count = 0;
        MemberWalk(
            changed, [&](const std::string& name, auto /*carried*/, auto& value, const auto& constructed) {
                if (count++ != at)
                    return;
                member = name.compare(0, 10, "assetItem.") == 0 ? "assetItemList" + name.substr(9) : name;
                value = constructed;
            });
        const auto left = ValuesIn(changed);
        for (const auto& [from, other] : {std::pair(&all, &left), std::pair(&left, &all)})
            for (const auto& value : *from) {
                if (other->count(value) != 0)
                    continue;
                const Place* const place = FindPlace(ThisModel(), value.first);
                ASSERT_NE(place, nullptr) << value.first << " is written, but no place of the model";
                EXPECT_TRUE(place->written) << value.first;
                EXPECT_TRUE(IsOf(*place, member)) << value.first << " changes with " << member;
                isWritten[place->member] = true;
            }
    }
    for (const Place& place : ThisModel().places)
        if (place.written && !place.member.empty() && !place.sample.empty()) {
            EXPECT_TRUE(isWritten[place.member]) << place.path << " was not seen to be written";
        }
}

TEST(ProtocolModel, HasEveryNameOfTheVocabulary)
{
    const std::string names = TextOf(TEST_DATA "/../src/assetconnector/codec/Vocabulary.def");
    const std::string opening = ", u\"";
    std::size_t count = 0;
    for (std::size_t at = names.find(opening); at != std::string::npos; at = names.find(opening, at)) {
        at += opening.size();
        const std::string name = names.substr(at, names.find('"', at) - at);
        EXPECT_TRUE(std::any_of(ThisModel().places.begin(), ThisModel().places.end(),
                                [&name](const Place& place) {
                                    return Protocol::AttributeOf(place.path) == name ||
                                           Protocol::ElementOf(place.path) == name;
                                }))
            << name << " is in no row of protocol/facts/PlaceFacts.cpp";
        ++count;
    }
    EXPECT_GT(count, 0U);
}

/// The newest of the models of released versions, by its version.
std::filesystem::path LastReleased()
{
    std::map<std::vector<int>, std::filesystem::path> models;
    for (const auto& file : std::filesystem::directory_iterator(TEST_DATA "/../docs/protocol")) {
        std::stringstream version(file.path().stem().string());
        std::vector<int> numbers;
        for (std::string number; std::getline(version, number, '.');)
            numbers.push_back(std::stoi(number));
        models[numbers] = file.path();
    }
    return models.rbegin()->second;
}

TEST(ProtocolModel, BreaksNoPanelWithoutALineInTheChangelog)
{
    const std::string changelog = TextOf(TEST_DATA "/../CHANGELOG.md");
    const std::size_t newest = changelog.find("\n## ");
    const std::string section = changelog.substr(newest, changelog.find("\n## ", newest + 1) - newest);
    for (const Protocol::Change& change : Compare(Protocol::ParseModel(TextOf(LastReleased())), ThisModel()))
        if (change.breaks) {
            EXPECT_NE(section.find('`' + std::string(Protocol::ShortName(change.subject)) + '`'),
                      std::string::npos)
                << change.subject << ": " << change.what
                << ": this breaks panels, and the newest section of CHANGELOG.md does not name it";
        }
}

}  // namespace
