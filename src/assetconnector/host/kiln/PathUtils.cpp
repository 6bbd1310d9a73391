#include "assetconnector/host/kiln/PathUtils.h"

#include <algorithm>
#include <cstddef>

namespace Kiln::PathUtils {
namespace {

/// \return Where the file part begins.
std::size_t FilePartAt(const UTF16String& path)
{
    const std::size_t separator = path.find_last_of(u"/\\");
    return separator == UTF16String::npos ? 0 : separator + 1;
}

constexpr bool IsLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

}  // namespace

void SplitPath(const UTF16String& path, UTF16String* drive, UTF16String* folder, UTF16String* name,
               UTF16String* extension)
{
    const std::size_t file = FilePartAt(path);
    const std::size_t afterDrive = file > 2 && IsLetter(path[0]) && path[1] == u':' ? 2 : 0;
    const std::size_t point = std::max(std::min(path.rfind(u'.'), path.size()), file);
    if (drive != nullptr)
        *drive = path.substr(0, afterDrive);
    if (folder != nullptr)
        *folder = path.substr(afterDrive, file - afterDrive);
    const std::size_t extensionAt = path[point] == u'.' ? point : path.size();
    if (name != nullptr)
        *name = path.substr(file, extensionAt - file);
    if (extension != nullptr)
        *extension = path.substr(extensionAt);
}

UTF16String GetFilePart(const UTF16String& path)
{
    return path.substr(FilePartAt(path));
}

}  // namespace Kiln::PathUtils
