#pragma once

/// Marks what the shared library exports. Everything else stays hidden; the linker version script
/// (cmake/assetconnector.map) keeps out what instantiated templates of std and boost would add.
#define AC_API __attribute__((visibility("default")))
