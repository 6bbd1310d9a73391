// Writes the model of the protocol, as JSON and as a source that holds it.

#include "assetconnector/host/Version.h"
#include "assetconnector/host/XMLPlatform.h"
#include "protocol/facts/Forms.h"
#include "protocol/generator/Events.h"
#include "protocol/generator/Places.h"
#include "protocol/generator/RecordingHost.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace Protocol::Generator {
namespace {

Model MakeModel()
{
    Model model;
    model.version = std::to_string(AC_VERSION_MAJOR) + '.' + std::to_string(AC_VERSION_MINOR) + '.' +
                    std::to_string(AC_VERSION_PATCH);
    model.requestRoot = ferrite::utility::UTF16to8(AC::kMessageRoot);
    model.notificationRoot = ferrite::utility::UTF16to8(AC::kNotificationRoot);
    for (const FormFact& form : kFormFacts)
        model.forms.push_back({form.name,
                               form.about,
                               Words(form.words),
                               {},
                               form.anyCase,
                               form.pattern,
                               form.writtenPattern,
                               form.malformed});
    model.records = AllRecords();
    {
        const RecordingHost host;
        model.places = MakePlaces();
        for (std::size_t i = 0; i < kFormFacts.size(); ++i)
            model.forms[i].values = ValuesOfWords(model.places, kFormFacts[i]);
    }
    AddEvents(model);
    return model;
}

void WriteFile(const char* path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    if (!(file << text).flush())
        throw std::runtime_error(std::string(path) + " cannot be written");
}

/// \return A source with an array of lines: one string would be longer than compilers must take.
std::string SourceOf(const std::string& text)
{
    std::string source = "// Generated.\n// NOLINTBEGIN\nconstexpr const char* kModelLines[] = {\n";
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        source += '"';
        for (const char unit : text.substr(at, end - at)) {
            if (unit == '"' || unit == '\\')
                source += '\\';
            source += unit;
        }
        source += "\",\n";
        at = end + 1;
    }
    return source + "};\n// NOLINTEND\n";
}

}  // namespace
}  // namespace Protocol::Generator

int main(int count, char** arguments)
{
    using namespace Protocol::Generator;
    try {
        if (count != 3)
            throw std::runtime_error("usage: generator JSON SOURCE");
        const AC::XMLPlatform platform;
        const std::string text = Protocol::ToJson(MakeModel()).dump(1) + '\n';
        WriteFile(arguments[1], text);
        WriteFile(arguments[2], SourceOf(text));
        return 0;
    } catch (const std::exception& exception) {
        std::cerr << "error: the protocol's model cannot be made: " << exception.what() << '\n';
        return 1;
    }
}
