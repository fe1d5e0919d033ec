# Debian packages, one per component. What Debian requires besides the files is in packaging/debian/.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library development tool)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE zep-config)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${ZEP_CONFIG_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Sets Debian's permissions, whatever the builder's umask is.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_permissions.cmake)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Each package has its own synopsis, the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

# The number is that of the SONAME: programs linked with another SONAME keep their library.
set(library libzep-config${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "start-up configuration of the Orvane server
Turns the server's command-line flags into a record of settings, checks it,
and writes the files by which a running server is found.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzep-config-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION}), libboost1.81-dev | libboost-dev (>= 1.81)")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "start-up configuration of the Orvane server (development files)
Headers, the CMake package zep_config, pkg-config data, documentation and an
example for programs that embed the library.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME orvane-config)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_TOOL_DESCRIPTION "check the Orvane server's flags, find running servers
Checks a command line of the Orvane application server without starting it,
explains what is wrong with it, and finds servers by their runtime files.")

# The system finds the libraries among the installed ones, so the binaries need no path.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/config ${PROJECT_BINARY_DIR}/platform)

set(files ${PROJECT_BINARY_DIR}/debian)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(packaging/debian/changelog.in ${files}/changelog @ONLY)
execute_process(COMMAND gzip -9nf ${files}/changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(component library development tool)
    string(TOUPPER ${component} upper)
    install(FILES packaging/debian/copyright ${files}/changelog.gz COMPONENT ${component}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
endforeach()
