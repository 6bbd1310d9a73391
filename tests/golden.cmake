# Runs a command and compares what it prints with a file, and its exit status:
# cmake -DEXPECTED=... -DSTATUS=... -P golden.cmake PROGRAM ARGS...
set(command "")
foreach(index RANGE 5 ${CMAKE_ARGC})
    list(APPEND command "${CMAKE_ARGV${index}}")
endforeach()
execute_process(COMMAND ${command} OUTPUT_VARIABLE actual RESULT_VARIABLE result)
file(READ ${EXPECTED} expected)
if(NOT result EQUAL STATUS OR NOT actual STREQUAL expected)
    message(FATAL_ERROR "${command}\nexit status ${result}\nexpected ${EXPECTED}, got\n${actual}")
endif()
