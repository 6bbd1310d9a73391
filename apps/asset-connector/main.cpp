#include "Commands.h"
#include "Input.h"
#include "System.h"
#include "assetconnector/host/XMLPlatform.h"

#include <CLI/CLI.hpp>
#include <boost/function.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace AssetConnector;

bool IsColoured()
{
    const char* const noColour = std::getenv("NO_COLOR");
    return (noColour == nullptr || *noColour == '\0') && System::ShowsColours();
}

/// Prints what is left. A reader who closed the pipe has seen enough; any other failure is one.
Status Flush(Status status)
{
    if (std::cout.flush() || System::ReaderIsGone())
        return status;
    Complain("standard output cannot be written");
    return kBad;
}

/// The command line.
class Program
{
public:
    Program()
    {
        mApp.require_subcommand(1);
        mApp.allow_windows_style_options(false);  // where "/name" may be a path
        CLI::App* const decode = AddCommand("decode", "Print the record that a panel's text decodes to",
                                            [this] { return Decode(mFile, std::cout); });
        AddFile(decode);
        CLI::App* const encode = AddCommand("encode", "Print the notification text of a record",
                                            [this] { return Encode(mFile, mDecoded, std::cout); });
        encode->add_flag("--decoded", mDecoded, "Decode the reserved characters in the text");
        AddFile(encode);
        CLI::App* const replay = AddCommand("replay", "Play a session file", [this] {
            return Replay(mFile, Mode(), IsColoured(), std::cout);
        });
        CLI::Option* const readable = replay->add_flag("--readable", mReadable, "Print it for people");
        replay->add_flag("--check", mCheck, "Compare the effects with those of the file")->excludes(readable);
        AddFile(replay);
        CLI::App* const events =
            AddCommand("events", "Print the event catalogue", [this] { return Events(mJson, std::cout); });
        events->add_flag("--json", mJson, "Print it as JSON");
        CLI::App* const protocol =
            AddCommand("protocol", "Print the reference of the protocol, or what changed", [this] {
                return mOld.empty() ? AssetConnector::Protocol(mJson, std::cout)
                                    : CompareProtocol(mOld, mJson, std::cout);
            });
        protocol->add_flag("--json", mJson, "Print the model that it is made of, or the changes, as JSON");
        protocol->add_option("--diff", mOld, "Print what changed for panels since this model, a file")
            ->type_name("OLD.json");
        CLI::App* const check = AddCommand("check", "Tell what a panel's text would silently lose", [this] {
            return AssetConnector::Check(mFile, mEvent, mJson, std::cout);
        });
        check->add_option("--event", mEvent, "The identifier of the request that carries the text");
        check->add_flag("--json", mJson, "Print the findings as JSON");
        AddFile(check);
    }

    int Run(std::vector<std::string> arguments)
    {
        const std::string first = arguments.empty() ? "-" : arguments.front();
        try {
            std::reverse(arguments.begin(), arguments.end());  // as it wants them
            mApp.parse(std::move(arguments));
        } catch (const CLI::Success& help) {
            mApp.exit(help);
            return Flush(kDone);
        } catch (const CLI::Error& error) {
            const bool isUnknown = first.compare(0, 1, "-") != 0 && mApp.get_subcommands().empty();
            Complain((isUnknown ? "unknown command \"" + first + '"' : error.what()) +
                     "; usage: asset-connector decode|encode|check|replay|events|protocol [OPTIONS] [FILE]");
            return kBad;
        }
        try {
            const AC::XMLPlatform platform;
            return Flush(mRun());
        } catch (const xercesc::OutOfMemoryException&) {  // not a std::exception
            Complain("not enough memory");
            return kBad;
        } catch (const std::bad_alloc&) {
            Complain("not enough memory");
            return kBad;
        } catch (const std::exception& exception) {
            Complain(exception.what());
            return kBad;
        }
    }

private:
    CLI::App* AddCommand(const char* name, const char* description, boost::function<Status()> run)
    {
        CLI::App* const command = mApp.add_subcommand(name, description);
        command->callback([this, run = std::move(run)] { mRun = run; });
        return command;
    }

    void AddFile(CLI::App* command)
    {
        command->add_option("FILE", mFile, "The file to read; standard input without it, or for -");
    }

    ReplayMode Mode() const
    {
        if (mCheck)
            return ReplayMode::kCheck;
        return mReadable ? ReplayMode::kReadable : ReplayMode::kPlain;
    }

    CLI::App mApp{"Decodes, encodes and plays the messages between HTML panels and a video host",
                  "asset-connector"};
    std::string mFile = "-";
    std::string mOld;
    std::string mEvent;
    bool mDecoded = false;
    bool mReadable = false;
    bool mCheck = false;
    bool mJson = false;
    boost::function<Status()> mRun;
};

}  // namespace

int main(int count, char** arguments)
{
    std::ios::sync_with_stdio(false);
    System::PrepareStreams();
    return Program().Run(System::Arguments(count, arguments));
}
