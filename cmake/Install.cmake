include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/AssetConnector)
set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/asset-connector)

set_target_properties(assetconnector_headers PROPERTIES EXPORT_NAME headers)
set_target_properties(assetconnector_reference_host PROPERTIES EXPORT_NAME reference_host)
set_target_properties(assetconnector_conformance PROPERTIES EXPORT_NAME conformance)
install(TARGETS assetconnector assetconnector_headers assetconnector_reference_host assetconnector_conformance
    EXPORT AssetConnectorTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT AssetConnectorTargets NAMESPACE AssetConnector:: DESTINATION ${package_dir})
if(ASSETCONNECTOR_BUILD_PROGRAM)
    file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(asset-connector PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
    install(TARGETS asset-connector RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    # For panel authors. Who builds the program alone can install all the same.
    add_dependencies(asset-connector assetconnector_panel_files)
    install(FILES ${assetconnector_shared_files} DESTINATION ${CMAKE_INSTALL_DATADIR}/asset-connector)
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
install(DIRECTORY reference_host DESTINATION ${include_dir} FILES_MATCHING PATTERN "*.h")
foreach(header Check Main Report Run Subject)
    install(FILES conformance/${header}.h DESTINATION ${include_dir}/conformance)
endforeach()

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
