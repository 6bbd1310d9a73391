// The desk: serves the panels' pages and is their host until it is interrupted.

#include "SelectionCheck.h"
#include "assetconnector/host/XMLPlatform.h"
#include "desk/LiveHost.h"
#include "desk/LiveWork.h"
#include "desk/RunningDesk.h"
#include "desk/play/PlayedHost.h"
#include "session/SessionFile.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <pthread.h>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

/// The signals that end the desk. They are blocked from here on, in all threads that are started later.
class EndSignals
{
public:
    EndSignals()
    {
        sigemptyset(&mSignals);
        sigaddset(&mSignals, SIGINT);
        sigaddset(&mSignals, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &mSignals, nullptr);
    }

    void Wait() const
    {
        int signal = 0;
        while (sigwait(&mSignals, &signal) != 0) {
        }
    }

    /// Any thread.
    static void Send() { kill(getpid(), SIGTERM); }

private:
    sigset_t mSignals;
};

void Complain(const std::string& what)
{
    std::cerr << "desk: " + what + "\n" << std::flush;
}

/// What the command line asks for.
struct Wishes
{
    Desk::DeskOptions desk;
    std::string play;  ///< A session file; empty: nothing is played.
    Desk::Pace::Settings pace;
};

/// \throws std::runtime_error with the file's name.
Desk::Script ReadPlayed(const std::string& name)
{
    const std::filesystem::path path = std::filesystem::u8path(name);
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path))
        throw std::runtime_error("cannot read " + name + "; --play takes a session file");
    try {
        return Desk::ReadScript(file, path.filename().u8string());
    } catch (const Session::SessionError& error) {
        throw std::runtime_error(name + ": line " + std::to_string(error.LineNumber()) + ": " + error.what());
    }
}

void RunUntilInterrupted(const Wishes& wishes)
{
    const EndSignals signals;
    const AC::XMLPlatform platform;
    std::optional<Desk::Script> script;
    if (!wishes.play.empty())
        script = ReadPlayed(wishes.play);
    std::optional<Desk::LiveWork> work;  // outlives the host
    const auto makeHost = [&](const Desk::RunningDesk::HostNeeds& needs) -> std::unique_ptr<Desk::Host> {
        if (script) {
            const Desk::PlayedHost::Options options{wishes.pace, needs.recording, needs.changed,
                                                    &needs.answers};
            return std::make_unique<Desk::PlayedHost>(*std::move(script), needs.thread, options);
        }
        work.emplace(needs.answers);
        return std::make_unique<Desk::LiveHost>(*work, needs.recording);
    };
    const Desk::RunningDesk desk(wishes.desk, makeHost);
    std::cout << "The desk is open at " << desk.GetAccess().Address() << "\n"
              << "Whoever has this address may use it. Ctrl+C ends the desk." << std::endl;
    signals.Wait();
}

}  // namespace

int main(int count, char** arguments)
{
    std::signal(SIGPIPE, SIG_IGN);
    CLI::App app("Runs a host with its panels in a browser", "desk");
    Wishes wishes;
    Desk::DeskOptions& options = wishes.desk;
    std::string author;
    std::string record;
    app.add_option("--port", options.port, "The port on loopback to listen on; any without it")
        ->type_name("N");
    app.add_option("--panel", author, "Serves a panel under work at /panel/, and loads it anew on change")
        ->type_name("FOLDER");
    app.add_option("--record", record, "Records what happens into a new session file")->type_name("FILE");
    CLI::Option* const play =
        app.add_option("--play", wishes.play, "Is a host from a session file")->type_name("SESSION");
    CLI::Option* const speed =
        app.add_option("--speed", wishes.pace.speed, "How many times as fast it is played, 0.01 to 1000")
            ->type_name("N")
            ->check(CLI::Range(0.01, 1000.0))
            ->needs(play);
    app.add_flag("--step", wishes.pace.isStepping, "Plays each line when the host page says so")
        ->needs(play)
        ->excludes(speed);
    try {
        app.parse(count, arguments);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::Error& error) {
        Complain(std::string(error.what()) + "; desk --help tells what it takes");
        return 2;
    }
    try {
        options.pages = DESK_PAGES;
        options.author = std::filesystem::u8path(author);
        options.record = std::filesystem::u8path(record);
        options.problem = Complain;
        options.end = &EndSignals::Send;
        options.check = [](const std::string& session) { return CheckSession(DESK_PLAYER, session); };
        RunUntilInterrupted(wishes);
        return 0;
    } catch (const std::exception& exception) {
        Complain(exception.what());
        return 2;
    }
}
