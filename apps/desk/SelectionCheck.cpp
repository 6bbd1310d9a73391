#include "SelectionCheck.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

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

/// \return The exit status.
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
    pid_t child = 0;
    const int failed = posix_spawn(&child, program.c_str(), &actions, nullptr, pointers, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0)
        throw std::runtime_error("cannot run " + program);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

std::string CheckSession(const std::string& program, const std::string& session)
{
    try {
        const ScratchFolder folder;
        const std::string file = folder.Path("selection.jsonl");
        const std::string output = folder.Path("output");
        std::ofstream(file, std::ios::binary) << session;
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
