# Installs the build, builds the example against what was installed, and runs it.
# cmake -DBUILD=... -DSOURCE=... -DCOMPILER=... -DFLAGS=... -P install_and_embed.cmake

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(result)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

set(work ${BUILD}/embedding)
file(REMOVE_RECURSE ${work})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${work}/installed)
run(${CMAKE_COMMAND} -S ${SOURCE}/examples/embedding -B ${work}/build -G Ninja -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_PREFIX_PATH=${work}/installed)
run(${CMAKE_COMMAND} --build ${work}/build)
run(${work}/build/embedding)
foreach(expected "show the ingest dialog for \"Interviews\"" "OpenIngestDialogStatus" "StartIngest"
        "component: ingest started")
    if(NOT output MATCHES "${expected}")
        message(FATAL_ERROR "\"${expected}\" is missing in:\n${output}")
    endif()
endforeach()
