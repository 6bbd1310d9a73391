#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"

/// What Files asks of the system, once for each: posix/Disk.cpp and windows/Disk.cpp.
namespace ReferenceHost::Disk {

enum class Kind
{
    kMissing,  ///< Or it cannot be looked at.
    kFile,
    kFolder,
};

/// \return What is at the path, links followed. \param path Without a NUL.
Kind LookAt(const UTF16String& path);

/// \return The path without ".", ".." and doubled separators.
UTF16String Normalized(const UTF16String& path);

}  // namespace ReferenceHost::Disk
