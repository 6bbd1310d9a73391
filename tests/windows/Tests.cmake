# What runs nowhere but here, and what does not run here.
not_here("reads schemas with xmllint; ./test does" Schema)
not_here("watches its file with inotify" MessageParser.OpensNoFile)
not_here("the compiler destroys no thread_local object before its memory is gone" BrokenHosts.QueueOfThePoster)
not_here("all of the build makes documents by public calls" public_dom_calls)
not_here("reads the model with Python; ./test does" protocol.model_schema)
not_here("reads the types with Node; ./test --all does" protocol.typescript)
not_here("runs in Node; ./test does" panels)
not_here("reads man page and completions with shells; ./test does" program.help)
not_here("reads ELF files" linked)

add_test(NAME exports COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/windows/exports $<TARGET_FILE:assetconnector>
    ${PROJECT_SOURCE_DIR}/cmake/debian/libassetconnector${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}.symbols)

add_test(NAME names COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/windows/names ${PROJECT_SOURCE_DIR})
