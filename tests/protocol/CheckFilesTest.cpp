// The checker and the files of the project: a text for each kind, the examples of the model, what is in the
// session files and texts, the document.

#include "session/format/Json.h"
#include "tests/protocol/Found.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace {

using namespace Protocol;
using std::filesystem::path;

const path kFolder = path(TEST_DATA) / "protocol";

/// \return What the first line of the text says.
std::string EventOf(const std::string& text)
{
    const std::string opening = "<!-- event: ";
    return text.compare(0, opening.size(), opening) != 0
               ? ""
               : text.substr(opening.size(), text.find(" -->") - opening.size());
}

TEST(CheckFiles, HasATextForEachKindThatGivesItAlone)
{
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(kFolder / "check"))
        files.insert(file.path().filename().string());
    for (const FindingKind& kind : FindingKinds()) {
        const std::string name(kind.name);
        ASSERT_TRUE(files.erase(name + ".xml") == 1 && files.erase(name + ".txt") == 1) << name;
        const std::string text = TextOf(kFolder / "check" / (name + ".xml"));
        const std::vector<Finding> findings = Check(ThisModel(), text, EventOf(text));
        ASSERT_EQ(findings.size(), 1U) << name;
        EXPECT_EQ(findings.front().kind, name);
    }
    EXPECT_TRUE(files.empty()) << *files.begin();
}

TEST(CheckFiles, IsDocumented)
{
    std::string table = "| Kind | What it is |\n|---|---|\n";
    for (const FindingKind& kind : FindingKinds())
        table.append("| `").append(kind.name).append("` | ").append(kind.about).append(" |\n");
    EXPECT_NE(TextOf(path(TEST_DATA) / "../docs/checking.md").find(table + '\n'), std::string::npos) << table;
}

TEST(CheckFiles, FindsNothingInTheExamples)
{
    for (const Event& event : ThisModel().events)
        if (event.kind == "request") {
            EXPECT_EQ(Found(event.example), "") << event.identifier;
            const std::string found = Found(event.example, event.identifier);
            EXPECT_TRUE(found.empty() || found == "not-handled") << event.identifier << found;
        }
}

/// Each request of the session files, with its event, and each text of the tests. What is listed is meant to
/// be odd.
TEST(CheckFiles, FindsInTheFilesWhatIsKnown)
{
    std::ostringstream found;
    const auto add = [&found](const std::string& where, const std::string& findings) {
        if (!findings.empty())
            found << where << ": " << findings << '\n';
    };
    std::set<path> files;
    for (const char* folder : {"sessions", "texts"})
        for (const auto& file : std::filesystem::directory_iterator(path(TEST_DATA) / folder))
            files.insert(file.path());
    for (const path& file : files) {
        if (file.extension() == ".xml")
            add(file.filename().string(), Found(TextOf(file)));
        std::ifstream lines(file);
        std::size_t number = 0;
        for (std::string line; file.extension() == ".jsonl" && std::getline(lines, line);) {
            ++number;
            if (line.compare(0, 9, "{\"panel\":") != 0)
                continue;
            const Session::Json json = Session::ParseJson(line);
            add(file.filename().string() + ' ' + std::to_string(number),
                Found(json.at("data"), json.at("panel")));
        }
    }
    EXPECT_EQ(found.str(), TextOf(kFolder / "session-findings.txt"));
}

}  // namespace
