#pragma once

/// Marks what the shared library exports. Everything else stays hidden; the linker version script
/// (cmake/assetconnector.map) keeps out what instantiated templates of std and boost would add.
#define AC_API __attribute__((visibility("default")))

/// Marks the members of an exported class that only the library calls.
#define AC_LOCAL __attribute__((visibility("hidden")))

/// Marks an inline constant or a static member of a public header: each module has its own. Otherwise a
/// compiler's default options make it a symbol that there is once in the process, and the plug-in which
/// happens to bring it stays loaded for ever.
#define AC_CONSTANT __attribute__((visibility("hidden")))
