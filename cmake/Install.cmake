include(CMakePackageConfigHelpers)

# Three components, of which the packages are made: runtime, program and, where nothing else is said, development.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/AssetConnector)
set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/asset-connector)

# A library with the headers of its folder, all of them or those named, for the engineers of a host.
function(install_development_library target folder)
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${folder})
    install(TARGETS ${target} EXPORT AssetConnectorTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
    if(ARGN)
        list(TRANSFORM ARGN PREPEND ${folder}/ OUTPUT_VARIABLE headers)
        list(TRANSFORM headers APPEND .h)
        install(FILES ${headers} DESTINATION ${include_dir}/${folder})
    else()
        install(DIRECTORY ${folder} DESTINATION ${include_dir} FILES_MATCHING PATTERN "*.h"
            PATTERN posix EXCLUDE PATTERN windows EXCLUDE PATTERN Disk.h EXCLUDE)
    endif()
endfunction()

set_target_properties(assetconnector_headers PROPERTIES EXPORT_NAME headers)
install(TARGETS assetconnector assetconnector_headers EXPORT AssetConnectorTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install_development_library(assetconnector_reference_host reference_host)
install_development_library(assetconnector_conformance conformance Check Main Report Run Subject)
install_development_library(assetconnector_recorder recorder Recorder)
install(EXPORT AssetConnectorTargets NAMESPACE AssetConnector:: DESTINATION ${package_dir})
if(ASSETCONNECTOR_BUILD_PROGRAM)
    set(zsh_dir ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
    if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
        set(zsh_dir ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
        # Where the loader does not search by itself.
        file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
        set_target_properties(asset-connector PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
    endif()
    install(TARGETS asset-connector RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
    # For panel authors. Who builds the program alone can install all the same.
    add_dependencies(asset-connector assetconnector_panel_files)
    install(FILES ${assetconnector_shared_files} DESTINATION ${CMAKE_INSTALL_DATADIR}/asset-connector
        COMPONENT program)
    install(DIRECTORY panels/client DESTINATION ${CMAKE_INSTALL_DATADIR}/asset-connector COMPONENT program)
    if(NOT WIN32)
        install(FILES docs/asset-connector.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
        install(FILES cmake/completions/asset-connector.bash RENAME asset-connector
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)
        install(FILES cmake/completions/_asset-connector DESTINATION ${zsh_dir} COMPONENT program)
    endif()
endif()

# The public headers: folders where all is public, and single headers of the others. The rest is internal.
set(public_headers
    codec/ACMessageDecoder.h
    codec/ACMessageEncoder.h
    connectors/ConnectorAccess.h
    connectors/ConnectorFrame.h
    connectors/EventCatalogue.def
    connectors/EventCatalogue.h
    connectors/IAssetConnectorPrivate.h
    connectors/IngestGlintLibraryConnector.h
    connectors/IngestMediaCollectionConnector.h
    connectors/StationMessages.def
    connectors/StationMessages.h
    registration/ACUtils.h
    xml/MessageLimits.h
    xml/MessageParser.h
    xml/ParseObserver.h
    xml/XMLUtilities.h)
foreach(header IN LISTS public_headers)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES src/assetconnector/${header} DESTINATION ${include_dir}/assetconnector/${folder})
endforeach()
install(DIRECTORY src/assetconnector/host src/assetconnector/message DESTINATION ${include_dir}/assetconnector
    FILES_MATCHING PATTERN "*.h")

# Guides, and what they refer to beside them.
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/asset-connector)
foreach(guide embedding conformance recording session-format message-format protocol checking panel-client performance)
    install(FILES docs/${guide}.md DESTINATION ${doc_dir}/docs)
endforeach()
install(DIRECTORY examples/embedding DESTINATION ${doc_dir}/examples)

configure_package_config_file(cmake/AssetConnectorConfig.cmake.in
    ${PROJECT_BINARY_DIR}/AssetConnectorConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/AssetConnectorConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/AssetConnectorConfig.cmake
    ${PROJECT_BINARY_DIR}/AssetConnectorConfigVersion.cmake DESTINATION ${package_dir})

# Relative to its own place, so that the installed tree can be moved.
file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/asset-connector.pc.in ${PROJECT_BINARY_DIR}/asset-connector.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/asset-connector.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(PROJECT_IS_TOP_LEVEL AND ASSETCONNECTOR_BUILD_PROGRAM AND WIN32)
    include(cmake/windows/Package.cmake)
elseif(PROJECT_IS_TOP_LEVEL AND ASSETCONNECTOR_BUILD_PROGRAM)
    include(cmake/Packages.cmake)
endif()
