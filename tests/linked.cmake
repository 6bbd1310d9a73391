# Compares docs/linked.spdx with the packages that a build needs and with what library and program load.
# cmake -DSOURCE=... -P linked.cmake LIBRARY PROGRAM

# expect_same WHAT LISTED ACTUAL: each a name of a list.
function(expect_same what listed actual)
    set(missing ${${actual}})
    list(REMOVE_ITEM missing ${${listed}})
    set(superfluous ${${listed}})
    list(REMOVE_ITEM superfluous ${${actual}})
    if(missing OR superfluous)
        message(FATAL_ERROR "docs/linked.spdx, ${what}: missing: ${missing}; superfluous: ${superfluous}")
    endif()
endfunction()

# Headers of others come with packages for development.
file(STRINGS ${SOURCE}/cmake/setup.sh packages REGEX "^build_packages=")
string(REGEX MATCHALL "[^ ()=]+-dev" packages "${packages}")
file(STRINGS ${SOURCE}/docs/linked.spdx references REGEX "^ExternalRef: .*-dev$")
list(TRANSFORM references REPLACE "^.*/" "")
expect_same("packages" references packages)

set(loaded "")
foreach(index RANGE 4 5)
    execute_process(COMMAND objdump -p ${CMAKE_ARGV${index}} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "NEEDED +[^ \n]+" needed "${output}")
    list(TRANSFORM needed REPLACE "NEEDED +" "")
    list(APPEND loaded ${needed})
endforeach()
list(REMOVE_DUPLICATES loaded)
list(FILTER loaded EXCLUDE REGEX "^(libassetconnector|ld-linux|libm\\.so)")  # ours, and parts of libc.so
file(STRINGS ${SOURCE}/docs/linked.spdx files REGEX "^PackageFileName: ")
list(TRANSFORM files REPLACE "^PackageFileName: " "")
expect_same("shared libraries" files loaded)
