#include "desk/play/Script.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/Marks.h"
#include "desk/play/Shortened.h"
#include "session/SessionFile.h"
#include "session/format/Json.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string_view>
#include <utility>

namespace Desk {
namespace {

constexpr std::string_view kPrefix = Marks::kPrefix;
constexpr std::size_t kMostOfTitle = 80;
constexpr std::size_t kMostOfComment = 2000;

/// \return The input for people: its key, and its value or the last part of it.
std::string TitleOf(const Session::Json& input)
{
    for (const char* const key :
         {"create", "release", "register", "panel", "station", "callback", "ui", "call", "host"}) {
        const auto found = input.find(key);
        if (found == input.end())
            continue;
        if (found->is_string()) {
            const auto& value = found->get_ref<const std::string&>();
            const bool isIdentifier = std::string(key) == "panel";
            const std::string shown = isIdentifier ? value.substr(value.rfind('.') + 1) : value;
            return std::string(key) + ' ' + Shortened(shown, kMostOfTitle);
        }
        return *found == false ? std::string(key) + " false" : key;
    }
    return {};
}

/// \return What the comment says: well-formed, as no line of JSON may be otherwise.
std::string TextOfComment(const std::string& line)
{
    const std::size_t begin = line.find_first_not_of(" \t\r#");
    if (begin == std::string::npos)
        return {};
    const std::size_t end = line.find_last_not_of(" \t\r");
    return ferrite::utility::UTF16to8(ferrite::utility::UTF8to16(line.substr(begin, end + 1 - begin)));
}

class ScriptReader final : public Session::Observer
{
public:
    explicit ScriptReader(Script& script) : mScript(script) {}

    void OnComment(const Session::Line& line) override
    {
        const std::string text = TextOfComment(line.text);
        if (text.compare(0, kPrefix.size(), kPrefix) == 0)
            return;
        const std::string above = std::exchange(mIsComment, true) ? *mComment : std::string();
        const char* const between = above.empty() || text.empty() ? "" : "\n";
        if (above.size() < kMostOfComment)
            mComment =
                boost::make_shared<const std::string>(Shortened(above + between + text, kMostOfComment));
    }

    void OnInput(const Session::Line& line, const Session::Json& json,
                 const Session::BoundCall& /*input*/) override
    {
        mIsComment = false;
        mTurn.inputs.push_back({line.number, Session::DumpJson(json)});
        mTurn.title = TitleOf(json);
        mTurn.comment = mComment;
        if (json.contains("host"))
            return;
        mTurn.us = line.us;
        if (const auto panel = json.find("panel"); panel != json.end())
            mTurn.awaits = panel->get<std::string>();
        EndTurn();
    }

    void OnEffect(const std::string& /*effect*/) override {}

    void OnEnd() override
    {
        if (!mTurn.inputs.empty())
            EndTurn();
    }

private:
    void EndTurn() { mScript.turns.push_back(std::exchange(mTurn, {})); }

    Script& mScript;
    Turn mTurn;
    boost::shared_ptr<const std::string> mComment = boost::make_shared<const std::string>();
    bool mIsComment = false;
};

}  // namespace

Script ReadScript(std::istream& file, std::string name)
{
    const std::string text(std::istreambuf_iterator<char>(file), {});
    Script script;
    script.file = std::move(name);
    script.lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    if (!text.empty() && text.back() != '\n')
        ++script.lines;
    std::istringstream lines(text);
    ScriptReader reader(script);
    Session::PlaySession(lines, Session::Style::kSession, reader);
    return script;
}

}  // namespace Desk
