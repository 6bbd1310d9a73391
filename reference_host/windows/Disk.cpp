#include "reference_host/Disk.h"

#include "reference_host/windows/LongPath.h"

#include <filesystem>
#include <string>
#include <windows.h>

namespace ReferenceHost::Disk {
namespace {

std::wstring Native(const UTF16String& path)
{
    return {path.begin(), path.end()};
}

}  // namespace

std::wstring LongPath(const UTF16String& given)
{
    const std::wstring path = Native(given);
    if (path.compare(0, 4, L"\\\\?\\") == 0 || path.compare(0, 4, L"\\\\.\\") == 0)
        return path;
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    if (full.compare(0, 4, L"\\\\.\\") == 0)
        return full;  // a device
    if (full.compare(0, 2, L"\\\\") == 0)
        return L"\\\\?\\UNC\\" + full.substr(2);
    return full.empty() ? path : L"\\\\?\\" + full;
}

Kind LookAt(const UTF16String& path)
{
    // Neither reading nor writing, so that it does not matter who else holds the file.
    const HANDLE handle =
        CreateFileW(LongPath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return Kind::kMissing;
    BY_HANDLE_FILE_INFORMATION information;
    const bool isKnown = GetFileInformationByHandle(handle, &information) != 0;
    CloseHandle(handle);
    if (!isKnown)
        return Kind::kMissing;
    return (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Kind::kFolder : Kind::kFile;
}

UTF16String Normalized(const UTF16String& path)
{
    const auto isSeparator = [&path](std::size_t at) {
        return at < path.size() && (path[at] == u'\\' || path[at] == u'/');
    };
    // The C++ library knows drives, but not that two separators begin a share.
    const bool isShare = isSeparator(0) && isSeparator(1) && !isSeparator(2);
    std::filesystem::path rest = Native(isShare ? path.substr(2) : path);
    rest = rest.lexically_normal().make_preferred();
    const std::wstring normal = (isShare ? L"\\\\" : L"") + rest.native();
    return {normal.begin(), normal.end()};
}

}  // namespace ReferenceHost::Disk
