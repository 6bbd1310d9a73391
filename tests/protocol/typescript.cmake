# Compiles uses and misuses of the types, and the JSON that the program prints and takes, as their values.
# cmake -DTYPES=... -DTESTS=... -DWORK=... -P typescript.cmake; among the long tests.
if(NOT DEFINED ENV{ASSETCONNECTOR_LONG_TESTS})
    message("skipped: ASSETCONNECTOR_LONG_TESTS is not set")
    return()
endif()

# Declares what files hold, with times and rates as the types have them.
function(declare type)
    foreach(file IN LISTS ARGN)
        file(READ ${file} json)
        string(REGEX REPLACE "(\"([A-Za-z]+Time|duration|[A-Za-z]+Point|frameRate)\": *-?[0-9]+)" "\\1n" json "${json}")
        cmake_path(GET file STEM name)
        string(MAKE_C_IDENTIFIER ${name} name)
        file(APPEND ${WORK}/values.ts "export const ${name}: ${type} = ${json};\n")
    endforeach()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(COPY ${TYPES} ${TESTS}/protocol/uses.ts ${TESTS}/protocol/misuses.ts DESTINATION ${WORK})
file(WRITE ${WORK}/values.ts "import { Message, Sparse } from \"./assetconnector\";\n")
file(GLOB decoded ${TESTS}/texts/*.json)
file(GLOB encoded ${TESTS}/records/*.json)
declare(Message ${decoded})
declare("Sparse<Message>" ${encoded})
execute_process(COMMAND tsc --strict --noEmit --target es2020 --lib es2020 uses.ts misuses.ts values.ts
    WORKING_DIRECTORY ${WORK} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result)
    message(FATAL_ERROR "tsc ended with ${result}\n${output}")
endif()
