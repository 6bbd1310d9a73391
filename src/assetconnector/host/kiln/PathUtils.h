#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/Host.h"
#include "assetconnector/host/ferrite/UTF16String.h"

/// The host's path utilities. SplitPath and GetFilePart are pure; the others forward to Kiln::IFiles and
/// throw std::logic_error without an installed host.
namespace Kiln::PathUtils {

/// Cuts a path behind its last '/' or '\'. An output that is null is left out; outputs may not overlap
/// the path.
/// \param drive "D:" of "D:\media\a.mov"; empty without a drive letter and colon in front of the folder.
/// \param folder "\media\": the rest up to and with the last separator.
/// \param name The file's name without its extension. \param extension With its point.
AC_API void SplitPath(const UTF16String& path, UTF16String* drive, UTF16String* folder, UTF16String* name,
                      UTF16String* extension);

/// \return What stands behind the last '/' or '\'.
AC_API UTF16String GetFilePart(const UTF16String& path);

inline bool ExistsOnDisk(const UTF16String& path)
{
    return AC::InstalledHost().files.ExistsOnDisk(path);
}

inline bool IsDirectory(const UTF16String& path)
{
    return AC::InstalledHost().files.IsDirectory(path);
}

inline UTF16String ToNormalizedPath(const UTF16String& path)
{
    return AC::InstalledHost().files.ToNormalizedPath(path);
}

}  // namespace Kiln::PathUtils
