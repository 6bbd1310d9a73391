#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"

namespace Kiln {

/// The disk and the host's two normal forms of a path. Implemented by the host, called by the library on
/// the thread that called it, several at once. Paths are what panels named: any text. What an operation
/// throws travels untouched.
class IFiles
{
public:
    virtual ~IFiles() = default;

    /// \return Whether the path names anything that is there; false for the empty path.
    virtual bool ExistsOnDisk(const UTF16String& path) = 0;

    /// \return Whether the path names a folder that is there.
    virtual bool IsDirectory(const UTF16String& path) = 0;

    /// The form under which metadata providers are registered.
    virtual UTF16String ToNormalizedPath(const UTF16String& path) = 0;

    /// The form in which the paths of a file list go to panels; other paths go as they are. An empty result
    /// leaves the path out of the list.
    virtual UTF16String NormalizePathWithoutUNC(const UTF16String& path) = 0;
};

}  // namespace Kiln
