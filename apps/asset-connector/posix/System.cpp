#include "System.h"

#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace AssetConnector::System {

void PrepareStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
}

std::vector<std::string> Arguments(int count, char** arguments)
{
    return {arguments + (count > 0 ? 1 : 0), arguments + count};
}

std::filesystem::path PathOf(const std::string& argument)
{
    return argument;
}

bool ShowsColours()
{
    return isatty(STDOUT_FILENO) == 1;
}

bool ReaderIsGone()
{
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0;
}

}  // namespace AssetConnector::System
