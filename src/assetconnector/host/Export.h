#pragma once

/// Marks what the shared library exports. Everything else stays hidden; the linker version script
/// (cmake/assetconnector.map) keeps out what instantiated templates of std and boost would add.
#define AC_API __attribute__((visibility("default")))

/// Marks the members of an exported class that only the library calls.
#define AC_LOCAL __attribute__((visibility("hidden")))
