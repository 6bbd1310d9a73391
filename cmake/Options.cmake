# What depends on the system stands in folders of this name.
set(assetconnector_system posix)
if(WIN32)
    set(assetconnector_system windows)
endif()

# What every target of this project is compiled with.
add_library(assetconnector_options INTERFACE)

target_compile_options(assetconnector_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    # Inline statics as unique symbols would keep the library from being unloaded.
    $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)

if(WIN32)
    target_compile_definitions(assetconnector_options INTERFACE NOMINMAX)  # our sources; hosts may have it or not
endif()

# A comma list for -fsanitize=, such as "address,undefined" or "thread".
set(ASSETCONNECTOR_SANITIZE "" CACHE STRING "Sanitizers to build with")
if(ASSETCONNECTOR_SANITIZE)
    target_compile_options(assetconnector_options INTERFACE
        -fsanitize=${ASSETCONNECTOR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(assetconnector_options INTERFACE -fsanitize=${ASSETCONNECTOR_SANITIZE})
endif()

if(ASSETCONNECTOR_BUILD_FUZZ)
    # Coverage for the fuzzer; only the fuzz targets link its main function.
    target_compile_options(assetconnector_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(assetconnector_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
