# A zip of what is installed, with the DLLs of others that library and program load and what their licences ask for.
if(assetconnector_libraries)  # those of the toolchain file
    install(DIRECTORY ${assetconnector_libraries}/bin/ DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
        FILES_MATCHING PATTERN "*.dll")
    install(DIRECTORY ${assetconnector_libraries}/share/licenses DESTINATION ${CMAKE_INSTALL_DATADIR}
        COMPONENT runtime)
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/licenses/asset-connector COMPONENT runtime)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME asset-connector)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME asset-connector-${PROJECT_VERSION}-windows-x86_64)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)

include(CPack)
