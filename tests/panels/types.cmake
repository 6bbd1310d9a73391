# Compiles uses and misuses of the client's types, where it is installed: beside the protocol's.
# cmake -DTYPES=... -DCLIENT=... -DTESTS=... -DWORK=... -P types.cmake; among the long tests.
if(NOT DEFINED ENV{ASSETCONNECTOR_LONG_TESTS})
    message("skipped: ASSETCONNECTOR_LONG_TESTS is not set")
    return()
endif()
file(REMOVE_RECURSE ${WORK})
file(COPY ${TYPES} ${CLIENT} ${TESTS}/panels/types.ts DESTINATION ${WORK})
execute_process(COMMAND tsc --strict --noEmit --target es2020 --lib es2020,dom types.ts
    WORKING_DIRECTORY ${WORK} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result)
    message(FATAL_ERROR "tsc ended with ${result}\n${output}")
endif()
