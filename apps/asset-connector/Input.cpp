#include "Input.h"

#include "System.h"
#include "session/Outline.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace AssetConnector {

Input::Input(const std::string& file) : mName(file), mStream(&mFile)
{
    if (file == "-") {
        mName = "standard input";
        mStream = &std::cin;
        return;
    }
    const std::filesystem::path path = System::PathOf(file);
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        throw std::runtime_error(file + ": is a directory");
    mFile.open(path, std::ios::binary);
    if (!mFile)
        throw std::runtime_error((file.empty() ? "\"\"" : file) + ": " + std::strerror(errno));
}

std::string Input::ReadAll()
{
    std::string content;
    try {
        content.assign(std::istreambuf_iterator<char>(*mStream), {});
    } catch (const std::ios_base::failure&) {  // thrown by the buffer, past the stream
        mStream->setstate(std::ios_base::badbit);
    }
    RequireGood();
    if (content.compare(0, 3, "\xEF\xBB\xBF") == 0)
        content.erase(0, 3);
    return content;
}

void Input::RequireGood() const
{
    if (mStream->bad())
        throw std::runtime_error(mName + ": cannot be read");
}

void Complain(const std::string& message)
{
    std::string line = "asset-connector: " + message;
    for (std::size_t at = 0; at < line.size(); ++at)
        if (const std::size_t control = Session::LengthOfControlAt(line, at))
            line.replace(at, control, " ");
    std::cerr << line << '\n';
}

}  // namespace AssetConnector
