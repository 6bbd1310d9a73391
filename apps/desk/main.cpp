// The desk: serves the panels' pages and is their host until it is interrupted.

#include "assetconnector/host/XMLPlatform.h"
#include "desk/LiveHost.h"
#include "desk/RunningDesk.h"
#include "desk/Work.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <pthread.h>
#include <string>

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
    Desk::IdleWork work;
    const Desk::RunningDesk desk(
        options, [&work](Desk::HostThread&) { return std::make_unique<Desk::LiveHost>(work); });
    std::cout << "The desk is open at " << desk.GetAccess().Address() << "\n"
              << "Whoever has this address may use it. Ctrl+C ends the desk." << std::endl;
    signals.Wait();
}

}  // namespace

int main(int count, char** arguments)
{
    std::signal(SIGPIPE, SIG_IGN);
    CLI::App app("Runs a host with its panels in a browser", "desk");
    std::uint16_t port = 0;
    app.add_option("--port", port, "The port on loopback to listen on; any without it")->type_name("N");
    try {
        app.parse(count, arguments);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::Error& error) {
        Complain(std::string(error.what()) + "; usage: desk [--port N]");
        return 2;
    }
    try {
        Desk::DeskOptions options;
        options.pages = DESK_PAGES;
        options.port = port;
        options.problem = Complain;
        RunUntilInterrupted(options);
        return 0;
    } catch (const std::exception& exception) {
        Complain(exception.what());
        return 2;
    }
}
