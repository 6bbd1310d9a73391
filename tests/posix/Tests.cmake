# Programs and shells of this system read what the build made.
set(made ${PROJECT_BINARY_DIR}/protocol)

# The protocol's model by its schema, with the distribution's Python, for which its package is.
add_test(NAME protocol.model_schema COMMAND /usr/bin/python3 ${CMAKE_CURRENT_SOURCE_DIR}/protocol/model_schema.py
    ${PROJECT_SOURCE_DIR}/protocol/protocol.schema.json ${made}/protocol.json)

# The types for JavaScript authors, with the distribution's compiler.
add_test(NAME protocol.typescript COMMAND ${CMAKE_COMMAND} -DTYPES=${made}/assetconnector.d.ts
    -DTESTS=${CMAKE_CURRENT_SOURCE_DIR} -DWORK=${CMAKE_CURRENT_BINARY_DIR}/typescript
    -P ${CMAKE_CURRENT_SOURCE_DIR}/protocol/typescript.cmake)
set_tests_properties(protocol.typescript PROPERTIES SKIP_REGULAR_EXPRESSION "^skipped: ")

# The man page and completions beside the help, the list of what is linked beside what is.
add_test(NAME program.help COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/program/help
    $<TARGET_FILE:asset-connector> ${PROJECT_SOURCE_DIR})
if(NOT ASSETCONNECTOR_SANITIZE)
    add_test(NAME linked COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR}
        -P ${CMAKE_CURRENT_SOURCE_DIR}/linked.cmake $<TARGET_FILE:assetconnector> $<TARGET_FILE:asset-connector>)
endif()

# The panels' client: its part of the model, what it does by Node's own test runner, and its types.
set(client ${PROJECT_SOURCE_DIR}/panels/client)
add_test(NAME panels.model COMMAND ${CMAKE_COMMAND} -DMADE=${made}/model.js -DKEPT=${client}/model.js
    -P ${CMAKE_CURRENT_SOURCE_DIR}/panels/model.cmake)
file(GLOB client_tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/panels/*.test.mjs)
foreach(client_test IN LISTS client_tests)
    get_filename_component(name ${client_test} NAME_WE)
    add_test(NAME panels.${name} COMMAND ${CMAKE_COMMAND} -DTEST=${client_test} -DMODEL=${made}/protocol.json
        -DPROGRAM=$<TARGET_FILE:asset-connector> -P ${CMAKE_CURRENT_SOURCE_DIR}/panels/node.cmake)
    set_tests_properties(panels.${name} PROPERTIES SKIP_REGULAR_EXPRESSION "^skipped: " TIMEOUT 300)
endforeach()
add_test(NAME panels.types COMMAND ${CMAKE_COMMAND} -DTYPES=${made}/assetconnector.d.ts -DCLIENT=${client}
    -DTESTS=${CMAKE_CURRENT_SOURCE_DIR} -DWORK=${CMAKE_CURRENT_BINARY_DIR}/client_types
    -P ${CMAKE_CURRENT_SOURCE_DIR}/panels/types.cmake)
set_tests_properties(panels.types PROPERTIES SKIP_REGULAR_EXPRESSION "^skipped: ")
