#pragma once

#include <streambuf>
#include <string>
#include <windows.h>

namespace AssetConnector::System {

/// Shows UTF-8 on a console, whatever its code page. A character may come in pieces.
class ConsoleBuffer : public std::streambuf
{
public:
    explicit ConsoleBuffer(HANDLE console) : mConsole(console) {}

protected:
    int_type overflow(int_type unit) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

private:
    /// \return Whether the console took the text up to there; the rest is kept.
    bool Show(std::size_t end);

    HANDLE mConsole;
    std::string mPending;
};

}  // namespace AssetConnector::System
