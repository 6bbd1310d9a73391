#pragma once

#include <cstdint>

/// The version of the headers. The build reads it from here.
#define AC_VERSION_MAJOR 0
#define AC_VERSION_MINOR 1
#define AC_VERSION_PATCH 0

namespace AC {

/// What must be the same in a host and in the library that it meets: before version 1, major and minor, as in
/// the name of the shared library; a patch changes no interface.
constexpr std::uint32_t kInterfaceVersion = AC_VERSION_MAJOR * 1000 + AC_VERSION_MINOR;

}  // namespace AC
