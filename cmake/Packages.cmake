# The packages for Debian, one a component; cmake/packages makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME asset-connector)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGE_CONTACT "asset-connector maintainers <maintainers@asset-connector.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/debian)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_ASSETCONNECTOR_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/Finish.cmake)

set(CPACK_COMPONENTS_ALL runtime development program)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_PROGRAM_DEPENDS runtime)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE asset-connector)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)  # the program's own library
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The name changes with the interface, as the name of the shared library does.
get_target_property(soversion assetconnector SOVERSION)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libassetconnector${soversion})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(control ${PROJECT_BINARY_DIR}/control)
# None yet when the name is new.
file(GLOB symbols CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/debian/${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME}.symbols)
if(symbols)
    configure_file(${symbols} ${control}/symbols COPYONLY)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/symbols)
endif()
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
list(APPEND CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "connects a desktop video host with its panels - shared library
The library sits inside a desktop application for video ingest and media
management. It decodes what HTML panels ask for, calls the host, and encodes
what the host has to tell them.

This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libassetconnector-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# What AssetConnectorConfig.cmake and asset-connector.pc ask for.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libxerces-c-dev (>= 3.1), libboost-dev (>= 1.66)")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "connects a desktop video host with its panels - development files
The library sits inside a desktop application for video ingest and media
management. It decodes what HTML panels ask for, calls the host, and encodes
what the host has to tell them.

This package holds headers, files for CMake and pkg-config, a host in one
process for tests and trials, checks of a host's services and a recorder of
what passes between a host and the library.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME asset-connector)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "decodes, encodes and plays messages of a host's HTML panels
The program translates the texts that a desktop video host and its HTML panels
exchange, plays recorded sessions, and tells what the protocol is.

For panel authors it comes with schemas of requests and notifications and with
types for TypeScript.")

include(CPack)
