#pragma once

#include "assetconnector/host/kiln/IFiles.h"

namespace ReferenceHost {

/// The disk. Total: no path makes an operation throw anything but std::bad_alloc; what cannot be looked at
/// counts as missing. Any thread.
class Files : public Kiln::IFiles
{
public:
    bool ExistsOnDisk(const UTF16String& path) override;
    bool IsDirectory(const UTF16String& path) override;

    /// \return The path without ".", ".." and doubled separators, as far as its text alone tells.
    UTF16String ToNormalizedPath(const UTF16String& path) override;

    /// \return The same, without a leading `\\?\`; `\\?\UNC\server` becomes `\\server`.
    UTF16String NormalizePathWithoutUNC(const UTF16String& path) override;
};

}  // namespace ReferenceHost
