#include "conformance/Main.h"

#include "conformance/Run.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace Conformance {
namespace {

constexpr char kHelp[] =
    "Checks a host of the asset connector.\n"
    "  --list           name the checks and what must hold, and check nothing\n"
    "  --only NAME      a check, or the checks of a service (\"stations\"), and what they need; repeatable\n"
    "  --tap            write the Test Anything Protocol\n"
    "  --junit FILE     write JUnit's XML to the file, too\n"
    "  --limit SECONDS  how long to wait for what must come (5); a check hangs after twelve times that\n";

struct CommandLine
{
    bool help = false;
    bool list = false;
    bool tap = false;
    std::string junit;
    Options options;
};

/// \throws std::invalid_argument
std::chrono::seconds Limit(const std::string& text)
{
    constexpr std::size_t kDigits = 5;
    if (text.empty() || text.size() > kDigits || text.find_first_not_of("0123456789") != std::string::npos ||
        std::stoi(text) == 0)
        throw std::invalid_argument("--limit wants whole seconds, not \"" + text + "\"");
    return std::chrono::seconds(std::stoi(text));
}

/// \throws std::invalid_argument
CommandLine Parse(const std::vector<std::string>& arguments)
{
    constexpr int kHang = 12;
    CommandLine line;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const auto value = [&argument, &arguments, name = *argument] {
            if (++argument == arguments.end())
                throw std::invalid_argument(name + " wants a value");
            return *argument;
        };
        if (*argument == "--help")
            line.help = true;
        else if (*argument == "--list")
            line.list = true;
        else if (*argument == "--tap")
            line.tap = true;
        else if (*argument == "--only")
            line.options.only.push_back(value());
        else if (*argument == "--junit")
            line.junit = value();
        else if (*argument == "--limit")
            line.options.limit = Limit(value());
        else
            throw std::invalid_argument("unknown option \"" + *argument + "\"");
    }
    line.options.hangLimit = kHang * line.options.limit;
    return line;
}

void List(const std::vector<Check>& checks)
{
    for (const Check& check : checks)
        std::cout << check.name << "\n    " << check.about << "\n";
}

/// \return The exit status. \throws std::runtime_error when the file cannot be written.
int Write(const Report& report, const CommandLine& line)
{
    (line.tap ? WriteTAP : WriteText)(report, std::cout);
    std::cout.flush();
    if (!line.junit.empty()) {
        std::ofstream file(std::filesystem::u8path(line.junit));
        WriteJUnit(report, file);
        file.close();
        if (!file)
            throw std::runtime_error("cannot write " + line.junit);
    }
    return report.Count(Outcome::kFailed) == 0 ? 0 : 1;
}

int CarryOut(CommandLine line, const Subject& subject, const std::vector<Check>& own)
{
    if (line.help) {
        std::cout << kHelp;
        return 0;
    }
    if (line.list) {
        List(Checks());
        List(own);
        return 0;
    }
    line.options.own = own;
    line.options.onHang = [&line](const Report& report) {
        try {
            Write(report, line);
        } catch (const std::exception& exception) {
            std::cerr << exception.what() << "\n";
        }
        std::_Exit(1);  // nothing can be destroyed: the check that hangs uses it
    };
    return Write(Run(subject, line.options), line);
}

}  // namespace

int Main(int argc, char** argv, const Subject& subject, const std::vector<Check>& own)
{
    try {
        return CarryOut(Parse({argv + (argc > 0 ? 1 : 0), argv + argc}), subject, own);
    } catch (const std::invalid_argument& error) {
        std::cerr << error.what() << "; --help tells the options\n";
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << "\n";
    } catch (...) {  // of the XML library, whose platform cannot be initialised
        std::cerr << DescribeException() << "\n";
    }
    return 2;
}

}  // namespace Conformance
