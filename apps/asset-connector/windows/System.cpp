#include "System.h"

#include "ConsoleBuffer.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "reference_host/windows/LongPath.h"

#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <memory>
#include <shellapi.h>
#include <windows.h>

namespace AssetConnector::System {
namespace {

/// Lets the stream write to the console, where its handle is one. The buffer is never destroyed, as the
/// stream is not.
void ShowOnConsole(DWORD standardHandle, std::ostream& stream)
{
    const HANDLE handle = GetStdHandle(standardHandle);
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) != 0)
        stream.rdbuf(new ConsoleBuffer(handle));
}

}  // namespace

void PrepareStreams()
{
    for (const int descriptor : {0, 1, 2})
        _setmode(descriptor, _O_BINARY);
    ShowOnConsole(STD_OUTPUT_HANDLE, std::cout);
    ShowOnConsole(STD_ERROR_HANDLE, std::cerr);
}

std::vector<std::string> Arguments(int /*count*/, char** /*arguments*/)
{
    // Those of main went through a code page.
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> arguments(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) {
        const std::wstring text = arguments.get()[i];
        texts.push_back(ferrite::utility::UTF16to8(UTF16String(text.begin(), text.end())));
    }
    return texts;
}

std::filesystem::path PathOf(const std::string& argument)
{
    const UTF16String path = ferrite::utility::UTF8to16(argument);
    constexpr std::size_t kCut = 248;  // where the system begins to refuse short forms
    return path.size() < kCut ? std::wstring(path.begin(), path.end()) : ReferenceHost::Disk::LongPath(path);
}

bool ShowsColours()
{
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(output, &mode) != 0 &&
           SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool ReaderIsGone()
{
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD written = 0;
    // Nothing but a write tells. A byte too many does no harm behind a failure.
    if (GetFileType(output) != FILE_TYPE_PIPE || WriteFile(output, "\n", 1, &written, nullptr) != 0)
        return false;
    const DWORD error = GetLastError();
    return error == ERROR_NO_DATA || error == ERROR_BROKEN_PIPE || error == ERROR_PIPE_NOT_CONNECTED;
}

}  // namespace AssetConnector::System
