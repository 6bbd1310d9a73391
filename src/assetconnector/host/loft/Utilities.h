#pragma once

#include "assetconnector/host/Host.h"
#include "assetconnector/host/ferrite/ImmutableString.h"

namespace Loft {

namespace Utilities {

/// As ferrite::utility::Guid::StringToGUID; the form used for dynamic columns. Pure, never throws.
inline ferrite::utility::Guid StringToGuid(const UTF16String& text) noexcept
{
    return ferrite::utility::Guid::StringToGUID(text);
}

/// Forwards to Kiln::IFiles::NormalizePathWithoutUNC.
/// \throws std::logic_error without an installed host; what the host throws.
inline UTF16String NormalizePathWithoutUNC(const UTF16String& path)
{
    return AC::InstalledHost().files.NormalizePathWithoutUNC(path);
}

}  // namespace Utilities

/// The station of the project, to which changes of dynamic columns are posted.
AC_API extern const ferrite::utility::ImmutableString kStation_BriselProject;

}  // namespace Loft
