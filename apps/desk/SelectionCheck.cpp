#include "SelectionCheck.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// A folder that goes with what is in it.
class ScratchFolder
{
public:
    ScratchFolder()
    {
        std::string name = (fs::temp_directory_path() / "desk-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no folder can be made in " + fs::temp_directory_path().string());
        mPath = name;
    }
    ~ScratchFolder()
    {
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string Path(const char* name) const { return (mPath / name).string(); }

private:
    fs::path mPath;
};

/// Waits so long for the end of a child, then ends it. \return The exit status; -1 when there is none.
int Await(pid_t child, std::chrono::seconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    for (bool isKilled = false;;) {
        int status = 0;
        const pid_t ended = waitpid(child, &status, isKilled ? 0 : WNOHANG);
        if (ended == child)
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        if (ended < 0 && errno != EINTR)
            return -1;
        if (isKilled)
            continue;
        if (std::chrono::steady_clock::now() >= end)
            isKilled = kill(child, SIGKILL) == 0;
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

/// \return The exit status; -1 when it came to no end.
int Run(const std::string& program, const std::string& session, const std::string& output)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, output.c_str(), O_WRONLY | O_CREAT | O_APPEND,
                                         0600);
    std::string arguments[] = {program, "replay", "--check", session};
    char* pointers[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(), arguments[3].data(),
                        nullptr};
    // What ends the desk ends the child, too: here these signals are blocked.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    pid_t child = 0;
    const int failed = posix_spawn(&child, program.c_str(), &actions, &attributes, pointers, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0)
        throw std::runtime_error("cannot run " + program);
    return Await(child, std::chrono::seconds(30));
}

}  // namespace

std::string CheckSession(const std::string& program, const std::string& session)
{
    try {
        const ScratchFolder folder;
        const std::string file = folder.Path("selection.jsonl");
        const std::string output = folder.Path("output");
        if (!(std::ofstream(file, std::ios::binary) << session << std::flush))
            return "it cannot be played: " + fs::temp_directory_path().string() + " is full";
        if (Run(program, file, output) == 0)
            return {};
        std::ifstream said(output, std::ios::binary);
        std::string why(std::istreambuf_iterator<char>(said), {});
        for (std::size_t at = why.find(file); at != std::string::npos; at = why.find(file))
            why.replace(at, file.size(), "selection");
        for (char& c : why)
            if (c == '\n')
                c = ' ';
        constexpr std::size_t kMost = 2000;
        return why.empty() ? "it could not be played" : why.substr(0, kMost);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}
