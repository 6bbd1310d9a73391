# Builds for Windows with the distribution's MinGW-w64 and POSIX threads. What others wrote comes from
# build/windows-libraries alone, which cmake/windows/libraries makes: nothing of this system's /usr is seen.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

cmake_path(SET assetconnector_libraries NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/windows-libraries)
list(PREPEND CMAKE_FIND_ROOT_PATH ${assetconnector_libraries})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine)
