#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"

#include <string>

namespace ReferenceHost::Disk {

/// \return The absolute form of the path, which the system does not cut at 260 units; the path itself where
///         there is none. Its units stay as they are, also halves of characters, which names of files may
///         hold.
std::wstring LongPath(const UTF16String& path);

}  // namespace ReferenceHost::Disk
