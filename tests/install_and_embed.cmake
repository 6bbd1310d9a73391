# Installs the build, for Windows by unpacking its zip, builds the example against what was installed, and runs it.
# cmake -DBUILD=... -DSOURCE=... -DCOMPILER=... -DFLAGS=... [-DTOOLCHAIN=... -DRUN=...] -P install_and_embed.cmake

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(result)
        message(FATAL_ERROR "${ARGN}\n${output}\nended with ${result}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# Builds a project in a folder of its own against the installed package.
function(build_with_package folder)
    run(${CMAKE_COMMAND} -S ${folder} -B ${folder}/build -G Ninja -DCMAKE_BUILD_TYPE=Release
        -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_PREFIX_PATH=${work}/installed
        ${cross})
    run(${CMAKE_COMMAND} --build ${folder}/build)
endfunction()

set(work ${BUILD}/installation)
file(REMOVE_RECURSE ${work})
set(cross "")
set(suffix "")
if(NOT TOOLCHAIN)
    run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${work}/installed)
else()
    file(REMOVE_RECURSE ${BUILD}/package)
    run(${CMAKE_CPACK_COMMAND} --config ${BUILD}/CPackConfig.cmake)
    file(GLOB zip ${BUILD}/package/*.zip)
    file(ARCHIVE_EXTRACT INPUT ${zip} DESTINATION ${work})
    cmake_path(GET zip STEM LAST_ONLY name)
    file(RENAME ${work}/${name} ${work}/installed)
    set(cross -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DCMAKE_FIND_ROOT_PATH=${work}/installed)
    set(ENV{AC_DLLS} ${work}/installed/bin)
    cmake_path(GET TOOLCHAIN PARENT_PATH libraries)
    set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/../../build/windows-libraries/lib/pkgconfig)
    # Hosts have the macros of windows.h, with "min" and "max"; the library was built without.
    string(PREPEND FLAGS "-include windows.h ")
    set(suffix .exe)
endif()
foreach(file protocol.json protocol.schema.json notifications.xsd requests.rng assetconnector.d.ts client/index.js
        client/index.d.ts)
    file(SIZE ${work}/installed/share/asset-connector/${file} size)  # fails without it
    if(size EQUAL 0)
        message(FATAL_ERROR "${file} is empty")
    endif()
endforeach()
file(COPY ${SOURCE}/examples/embedding DESTINATION ${work})
build_with_package(${work}/embedding)

# What the README shows.
file(READ ${SOURCE}/README.md readme)
string(REGEX MATCH "```cpp\n([^`]*)```" found "${readme}")
file(WRITE ${work}/readme/main.cpp "${CMAKE_MATCH_1}")
file(WRITE ${work}/readme/CMakeLists.txt "cmake_minimum_required(VERSION 3.21)
project(Host LANGUAGES CXX)
find_package(AssetConnector REQUIRED)
add_executable(host main.cpp)
target_link_libraries(host PRIVATE AssetConnector::reference_host AssetConnector::assetconnector)
")
build_with_package(${work}/readme)
string(REPLACE "-include windows.h " "" FLAGS "${FLAGS}")
run(${RUN} ${work}/readme/build/host${suffix})

# Each installed header compiles alone, with a second inclusion of itself; on Windows all of them before and behind
# windows.h.
file(GLOB_RECURSE headers RELATIVE ${work}/installed/include/asset-connector
    ${work}/installed/include/asset-connector/*.h)
foreach(header IN LISTS headers)
    string(MAKE_C_IDENTIFIER ${header} name)
    if(TOOLCHAIN)
        file(APPEND ${work}/headers/before.cpp "#include \"${header}\"\n")
    else()
        file(WRITE ${work}/headers/${name}.cpp "#include \"${header}\"\n#include \"${header}\"\n")
    endif()
endforeach()
if(TOOLCHAIN)
    file(WRITE ${work}/headers/behind.cpp "#include <windows.h>\n#include \"before.cpp\"\n")
    file(APPEND ${work}/headers/before.cpp "#include <windows.h>\n")
    file(COPY ${SOURCE}/tests/windows/GetObject.cpp DESTINATION ${work}/headers)
endif()
file(WRITE ${work}/headers/CMakeLists.txt "cmake_minimum_required(VERSION 3.21)
project(Headers LANGUAGES CXX)
find_package(AssetConnector REQUIRED)
file(GLOB sources *.cpp)
add_library(headers OBJECT \${sources})
target_link_libraries(headers PRIVATE AssetConnector::reference_host AssetConnector::assetconnector)
target_compile_options(headers PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -fsyntax-only)
")
build_with_package(${work}/headers)

# The same by pkg-config, from the installed tree alone.
find_program(pkg_config pkg-config)
if(pkg_config)
    file(GLOB_RECURSE pc ${work}/installed/*.pc)
    cmake_path(GET pc PARENT_PATH pc_folder)
    run(${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pc_folder} ${pkg_config} --cflags --libs asset-connector)
    separate_arguments(flags UNIX_COMMAND "${output}")
    file(WRITE ${work}/events.cpp
        "#include \"assetconnector/connectors/EventCatalogue.h\"\nint main() { return AC::EventCatalogue().empty() ? 1 : 0; }\n")
    run(${COMPILER} -std=c++17 ${work}/events.cpp -o ${work}/events ${flags})
    cmake_path(GET pc_folder PARENT_PATH libraries)
    run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${libraries} ${RUN} ${work}/events${suffix})
endif()

run(${RUN} ${work}/embedding/build/embedding${suffix})
foreach(expected "show the ingest dialog for \"Interviews\"" "OpenIngestDialogStatus" "StartIngest"
        "component: ingest started")
    if(NOT output MATCHES "${expected}")
        message(FATAL_ERROR "\"${expected}\" is missing in:\n${output}")
    endif()
endforeach()

# It records itself, and the installed program plays what it recorded.
run(${RUN} ${work}/embedding/build/embedding${suffix} ${work}/recordings)
run(${RUN} ${work}/installed/bin/asset-connector${suffix} replay --check ${work}/recordings/session-000001.jsonl)
file(READ ${work}/recordings/session-000001.jsonl recording)
foreach(expected "{\"panel\":\"com.velmo.browser.event.OpenIngestDialog\"" "{\"dispatcher\":\"ShowIngestDialog\""
        "{\"deliver\":\"AC::IngestStartedMessage\"" "{\"destroyed\":\"library\"")
    if(NOT recording MATCHES "${expected}")
        message(FATAL_ERROR "${expected} is missing in:\n${recording}")
    endif()
endforeach()

# It checks itself, with the installed kit.
run(${RUN} ${work}/embedding/build/conformance${suffix} --tap --junit ${work}/conformance.xml)
foreach(expected "ok [0-9]+ - stations.order\n" "ok [0-9]+ - panels.registered\n"
        "ok [0-9]+ - panels.dispatched # SKIP the subject has no setPanel\n")
    if(NOT output MATCHES "${expected}")
        message(FATAL_ERROR "\"${expected}\" is missing in:\n${output}")
    endif()
endforeach()
file(READ ${work}/conformance.xml report)
if(NOT report MATCHES "</testsuites>")
    message(FATAL_ERROR "no report in JUnit's form:\n${report}")
endif()
