// The desk: serves the panels' pages and is their host until it is interrupted.

#include "SelectionCheck.h"
#include "assetconnector/host/XMLPlatform.h"
#include "desk/LiveHost.h"
#include "desk/LiveWork.h"
#include "desk/RunningDesk.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <pthread.h>
#include <string>
#include <unistd.h>

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

void RunUntilInterrupted(const Desk::DeskOptions& options)
{
    const EndSignals signals;
    const AC::XMLPlatform platform;
    std::optional<Desk::LiveWork> work;  // outlives the host
    const Desk::RunningDesk desk(options, [&work](const Desk::RunningDesk::HostNeeds& needs) {
        work.emplace(needs.answers);
        return std::make_unique<Desk::LiveHost>(*work, needs.recording);
    });
    std::cout << "The desk is open at " << desk.GetAccess().Address() << "\n"
              << "Whoever has this address may use it. Ctrl+C ends the desk." << std::endl;
    signals.Wait();
}

}  // namespace

int main(int count, char** arguments)
{
    std::signal(SIGPIPE, SIG_IGN);
    CLI::App app("Runs a host with its panels in a browser", "desk");
    Desk::DeskOptions options;
    std::string author;
    std::string record;
    app.add_option("--port", options.port, "The port on loopback to listen on; any without it")
        ->type_name("N");
    app.add_option("--panel", author, "Serves a panel under work at /panel/, and loads it anew on change")
        ->type_name("FOLDER");
    app.add_option("--record", record, "Records what happens into a new session file")->type_name("FILE");
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
        RunUntilInterrupted(options);
        return 0;
    } catch (const std::exception& exception) {
        Complain(exception.what());
        return 2;
    }
}
