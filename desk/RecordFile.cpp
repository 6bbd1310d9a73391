#include "desk/RecordFile.h"

#include <cerrno>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace Desk {
namespace {

constexpr std::string_view kLost = "# lost: ";

/// \return Where the comment on lost lines begins; npos without one.
std::size_t FindLost(const std::string& lines)
{
    std::size_t found = lines.find(kLost);
    while (found != std::string::npos && found != 0 && lines[found - 1] != '\n')  // a text has the words
        found = lines.find(kLost, found + 1);
    return found;
}

}  // namespace

RecordFile::RecordFile(const std::filesystem::path& path) : mName(path.u8string())
{
    if (std::filesystem::exists(path))
        throw std::runtime_error(mName + " is there already; record into a new file");
    errno = 0;
    mFile.open(path, std::ios::binary);
    if (!mFile)
        throw std::runtime_error("cannot write " + mName + " (" + std::generic_category().message(errno) +
                                 "); record into another file");
}

void RecordFile::Write(const std::string& lines, const boost::function<void(const std::string&)>& problem)
{
    if (!mFile.is_open())
        return;
    // What follows begins anew, as another file would.
    const std::size_t lost = FindLost(lines);
    mFile << lines.substr(0, lost) << std::flush;
    if (!mFile)
        End("it cannot be written any more; is the disk full?", problem);
    else if (lost != std::string::npos)
        End("more passes than can be written", problem);
}

void RecordFile::End(const std::string& why, const boost::function<void(const std::string&)>& problem)
{
    mFile.close();
    problem("the recording " + mName + " ends here: " + why);
}

}  // namespace Desk
