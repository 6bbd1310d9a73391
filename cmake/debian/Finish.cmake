# Run by CPack over what is installed for the packages: adds what the distribution wants in each of them.
cmake_minimum_required(VERSION 3.21)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
    set(doc ${root}/usr/share/doc/${package})
    file(MAKE_DIRECTORY ${doc})
    file(COPY_FILE ${CPACK_ASSETCONNECTOR_SOURCE}/cmake/debian/copyright ${doc}/copyright)
    file(COPY_FILE ${CPACK_ASSETCONNECTOR_SOURCE}/docs/linked.spdx ${doc}/linked.spdx)
    run(awk -v package=${CPACK_PACKAGE_NAME} -v maintainer=${CPACK_PACKAGE_CONTACT}
        -f ${CPACK_ASSETCONNECTOR_SOURCE}/cmake/debian/changelog.awk ${CPACK_ASSETCONNECTOR_SOURCE}/CHANGELOG.md
        OUTPUT_FILE ${doc}/changelog)
    file(GLOB manuals ${root}/usr/share/man/man*/*)
    run(gzip -9n ${doc}/changelog ${manuals})
    file(GLOB_RECURSE archives ${root}/*.a)
    if(archives)
        run(strip --strip-debug --enable-deterministic-archives ${archives})
    endif()
endforeach()
