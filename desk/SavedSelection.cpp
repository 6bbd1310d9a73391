#include "desk/SavedSelection.h"

#include "session/format/Json.h"

#include <algorithm>
#include <set>

namespace Desk {
namespace {

using Session::Json;

constexpr const char* kQuietCalls =
    "\"Kiln::StationUtils::AddListener\",\"PlexaManager::AddTandemEventListener\","
    "\"PlexaManager::RemoveTandemEventListener\"";

/// What a message says, posted or delivered.
std::string MessageOf(const Json& line, const char* member)
{
    return Session::DumpJson(Json{line.at(member), line.at("station"), line.at("payload")});
}

bool Contains(const std::vector<std::string>& texts, const std::string& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// Writes the file, and knows what its lines have told so far.
class Writer
{
public:
    void Add(const Traffic::Passage& passage)
    {
        Become(passage);
        for (const std::string& line : passage.lines) {
            const Json json = Session::ParseJson(line);
            if (json.contains("post"))
                mPosted.insert(MessageOf(json, "post"));
            if (json.contains("deliver")) {
                const auto posted = mPosted.find(MessageOf(json, "deliver"));
                if (posted == mPosted.end())
                    continue;  // of an input that is not in the file
                mPosted.erase(posted);
            }
            if (json.contains("create"))
                mAlive.push_back(json["create"]);
            if (json.contains("release"))
                mAlive.erase(std::remove(mAlive.begin(), mAlive.end(), json["release"].get<std::string>()),
                             mAlive.end());
            if (json.contains("register"))
                mIsRegistered = json["register"];
            mText += line + "\n";
        }
    }

    const std::string& Text() const { return mText; }

private:
    /// Brings the host of a replay to where the input was.
    void Become(const Traffic::Passage& passage)
    {
        std::string steps;
        const auto add = [&steps](const char* key, const Json& value) {
            steps += Session::DumpJson(Json{{key, value}});
            steps += '\n';
        };
        if (passage.isRegistered != mIsRegistered)
            add("register", passage.isRegistered);
        for (const std::string& each : mAlive)
            if (!Contains(passage.alive, each)) {
                add("release", each);
                add("destroyed", each);
            }
        for (const std::string& each : passage.alive)
            if (!Contains(mAlive, each))
                add("create", each);
        if (!steps.empty())
            mText.append(R"({"host":{"quiet":[)")
                .append(kQuietCalls)
                .append("]}}\n")
                .append(steps)
                .append(R"({"host":{"quiet":[]}})")
                .append("\n");
        mIsRegistered = passage.isRegistered;
        mAlive = passage.alive;
        Json changes = Json::object();
        for (const auto& [key, value] : passage.host.items())
            if (mHost.value(key, Json()) != value || key == "guids" || key == "answers" || key == "throwsAt")
                changes[key] = value;
        if (!changes.empty())
            mText += Session::DumpJson(Json{{"host", changes}}) + "\n";
        mHost.update(passage.host);
    }

    std::string mText = "# Saved from the traffic of a desk: inputs that somebody selected.\n";
    Json mHost = Json::object();
    std::vector<std::string> mAlive;
    bool mIsRegistered = false;
    std::multiset<std::string> mPosted;  ///< And not delivered.
};

}  // namespace

std::string SessionOf(const std::vector<Traffic::Passage>& passages)
{
    Writer writer;
    for (const Traffic::Passage& passage : passages)
        writer.Add(passage);
    return writer.Text();
}

}  // namespace Desk
