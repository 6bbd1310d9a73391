# Compares the client's part of the model with the one just made: cmake -DMADE=... -DKEPT=... -P model.cmake
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${MADE} ${KEPT} RESULT_VARIABLE result ERROR_QUIET)
if(result)
    message(FATAL_ERROR "the client's part of the model is an old one; run: cp ${MADE} ${KEPT}")
endif()
