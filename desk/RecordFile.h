#pragma once

#include <boost/function.hpp>

#include <filesystem>
#include <fstream>
#include <string>

namespace Desk {

/// The file that a recording goes to. What goes wrong ends it and is told once. Used by the recorder's
/// thread.
class RecordFile
{
public:
    /// \param path Not there yet: nothing is written over. \throws std::runtime_error when it cannot be made.
    explicit RecordFile(const std::filesystem::path& path);

    /// \param lines Whole ones. \param problem Told in one line why the recording ends here.
    void Write(const std::string& lines, const boost::function<void(const std::string&)>& problem);

private:
    void End(const std::string& why, const boost::function<void(const std::string&)>& problem);

    const std::string mName;
    std::ofstream mFile;
};

}  // namespace Desk
