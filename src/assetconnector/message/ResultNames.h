#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ridge/RecordLists.h"

namespace AC {

/// \return The result name of a host code, as panels read it: "ERROR" for every code without a name of its
///         own. Never empty. Any thread.
AC_API const UTF16String& ResultName(Ridge::ResultCode code) noexcept;

}  // namespace AC
