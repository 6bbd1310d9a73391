#pragma once

// What compilers spell differently; nothing else in the library asks which compiler or system it is built
// for.

#ifdef _WIN32

/// Marks what the DLL exports. The compiler that builds a host sees no mark: the linker imports functions and
/// constants by itself, so that the same objects link with the DLL and with the static library.
#ifdef AC_BUILDS_LIBRARY
#define AC_API __declspec(dllexport)
#else
#define AC_API
#endif

/// Of a marked class a DLL would export every member.
#define AC_API_PARTS

/// Of a DLL nothing is seen that is not marked, and each module has its own constants.
#define AC_LOCAL
#define AC_CONSTANT

#else

/// Marks what the shared library exports. Everything else stays hidden; the linker version script
/// (cmake/assetconnector.map) keeps out what instantiated templates of std and boost would add.
#define AC_API __attribute__((visibility("default")))

/// Marks an exported class whose members are marked one by one, since some are AC_LOCAL.
#define AC_API_PARTS AC_API

/// Marks the members of an exported class that only the library calls.
#define AC_LOCAL __attribute__((visibility("hidden")))

/// Marks an inline constant or a static member of a public header: each module has its own. Otherwise a
/// compiler's default options make it a symbol that there is once in the process, and the plug-in which
/// happens to bring it stays loaded for ever.
#define AC_CONSTANT __attribute__((visibility("hidden")))

#endif

/// Marks a function whose values must not lie on the stack of a caller that calls itself.
#define AC_NOINLINE __attribute__((noinline))
