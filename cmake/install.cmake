# What is installed, and the zip of it. The layout on Windows is the server's: programs and DLLs in bin/win64.
include(CMakePackageConfigHelpers)

if(WIN32)
    set(binaries bin/win64)
else()
    set(binaries ${CMAKE_INSTALL_BINDIR})
endif()
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zep_config)

# install_library(TARGET NAMESPACE NAME): users of the package link NAMESPACE::NAME.
function(install_library target namespace name)
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    install(TARGETS ${target} EXPORT ${target}-targets COMPONENT library
        RUNTIME DESTINATION ${binaries}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    if(MINGW)
        install(FILES $<TARGET_FILE:${target}>.debug DESTINATION ${binaries} COMPONENT debug)
    endif()
    install(EXPORT ${target}-targets NAMESPACE ${namespace}:: DESTINATION ${package_dir} COMPONENT development)
endfunction()

install_library(zep_config zep config)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development PATTERN same_boost.hpp EXCLUDE)
# The installed header has the number of the Boost that the library is built with.
get_target_property(boost_folders Boost::headers INTERFACE_INCLUDE_DIRECTORIES)
find_file(ZEP_CONFIG_BOOST_VERSION_HPP boost/version.hpp PATHS ${boost_folders} DOC "Boost's version.hpp"
    REQUIRED NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ZEP_CONFIG_BOOST_VERSION_HPP})
file(STRINGS ${ZEP_CONFIG_BOOST_VERSION_HPP} boost_version REGEX "^#define BOOST_VERSION [0-9]+$")
string(REGEX MATCH "[0-9]+" boost_version "${boost_version}")
file(READ include/qel/config/detail/same_boost.hpp same_boost)
string(REPLACE "BOOST_VERSION BOOST_VERSION" "BOOST_VERSION ${boost_version}" same_boost "${same_boost}")
math(EXPR boost_major "${boost_version} / 100000")
math(EXPR boost_minor "${boost_version} / 100 % 1000")
string(REPLACE "BOOST_RELEASE" "${boost_major}.${boost_minor}" same_boost "${same_boost}")
file(CONFIGURE OUTPUT same_boost.hpp CONTENT "${same_boost}" @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/same_boost.hpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qel/config/detail COMPONENT development)
set(platform_targets "")
set(platform_libs "")
if(TARGET qel_platform)
    install_library(qel_platform qel platform)
    install(DIRECTORY platform/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
    set(platform_targets qel_platform-targets.cmake)
    set(platform_libs " -lqel_platform")
endif()
if(TARGET orvane-config)
    install(TARGETS orvane-config RUNTIME DESTINATION ${binaries} COMPONENT tool)
    install(DIRECTORY tools/orvane-config/schemas DESTINATION ${CMAKE_INSTALL_DATADIR}/orvane-config COMPONENT tool)
    # A tool built for another system does not run here, and Windows has no directory for these files.
    if(NOT CMAKE_CROSSCOMPILING AND NOT WIN32)
        include(cmake/tool_documents.cmake)
        foreach(section 1 5 7)
            install(FILES ${manual_${section}} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT tool)
        endforeach()
        install(FILES ${tool_documents}/orvane-config
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
        install(FILES ${tool_documents}/_orvane-config
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tool)
        install(FILES ${tool_documents}/orvane-config.fish
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
    endif()
endif()
if(PROJECT_IS_TOP_LEVEL)
    # Two of its links lead to other places here than in the source tree.
    file(RELATIVE_PATH conformance /${CMAKE_INSTALL_DOCDIR} /${CMAKE_INSTALL_DATADIR}/zep_config/conformance/README.md)
    file(READ README.md readme)
    string(REPLACE "[tests/data/README.md](tests/data/README.md)" "[the conformance tables](${conformance})" readme "${readme}")
    string(REPLACE "[debian/copyright](debian/copyright)" "[copyright](copyright)" readme "${readme}")
    file(WRITE ${PROJECT_BINARY_DIR}/README.md "${readme}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS README.md)
    install(FILES ${PROJECT_BINARY_DIR}/README.md debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
    install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT development PATTERN api EXCLUDE)
    # Another build makes it, for WebAssembly.
    set(ZEP_CONFIG_PAGE "" CACHE FILEPATH "orvane-config.html, to be installed with the documentation")
    if(ZEP_CONFIG_PAGE)
        install(FILES ${ZEP_CONFIG_PAGE} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
    endif()
    # What the tests read, for other implementations; tests/data/README.md describes it.
    set(tables flags fields flags_accepted flags_refused values_accepted values_refused caches_refused validate full full_outcome)
    list(TRANSFORM tables REPLACE "(.+)" "tests/data/\\1.txt")
    install(FILES tests/data/README.md ${tables} DESTINATION ${CMAKE_INSTALL_DATADIR}/zep_config/conformance COMPONENT development)
    # Users build an example in its own directory.
    install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT development
        USE_SOURCE_PERMISSIONS PATTERN build EXCLUDE)
endif()
if(runtime_dlls)
    # Nobody debugs them, and nine tenths of the largest one would be for that. Who passes them on must pass on their licences.
    foreach(file ${runtime_dlls})
        get_filename_component(name ${file} NAME)
        execute_process(COMMAND ${CMAKE_STRIP} -o ${PROJECT_BINARY_DIR}/${name} ${file} COMMAND_ERROR_IS_FATAL ANY)
        install(FILES ${PROJECT_BINARY_DIR}/${name} DESTINATION ${binaries} COMPONENT library)
    endforeach()
    set(documents /usr/share/doc)
    foreach(licence gcc=${documents}/gcc-mingw-w64-x86-64-posix-runtime/copyright
            mingw-w64=${documents}/mingw-w64-x86-64-dev/copyright gpl=/usr/share/common-licenses/GPL)
        string(REGEX MATCH "(.*)=(.*)" licence ${licence})
        set(name ${CMAKE_MATCH_1}.txt)
        if(NOT EXISTS ${CMAKE_MATCH_2})
            message(STATUS "no ${CMAKE_MATCH_2}: the package lacks a licence of the runtime DLLs")
            continue()
        endif()
        file(REAL_PATH ${CMAKE_MATCH_2} text)
        install(FILES ${text} RENAME ${name} DESTINATION ${CMAKE_INSTALL_DOCDIR}/runtime-licences COMPONENT library)
    endforeach()
    # Programs must be built with the compiler that built the libraries.
    install(FILES ${CMAKE_TOOLCHAIN_FILE} DESTINATION ${package_dir} COMPONENT development)
endif()

configure_package_config_file(cmake/zep_config-config.cmake.in zep_config-config.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(zep_config-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zep_config-config.cmake ${PROJECT_BINARY_DIR}/zep_config-config-version.cmake
    DESTINATION ${package_dir} COMPONENT development)

# gdb looks for a library's printers beside it, if it is allowed to, and at the library's path below its own directory.
if(NOT WIN32)
    set(ZEP_CONFIG_GDB_DIR ${CMAKE_INSTALL_LIBDIR} CACHE STRING "where gdb's pretty printers are installed")
    install(FILES config/gdb/printers.py RENAME libzep_config.so.${PROJECT_VERSION}-gdb.py
        DESTINATION ${ZEP_CONFIG_GDB_DIR} COMPONENT library)
endif()

# Relative to the file itself, so that the installed tree can be moved. Nobody moves /usr, and compilers search it anyway.
set(prefix /usr)
if(NOT CMAKE_INSTALL_PREFIX STREQUAL prefix)
    file(RELATIVE_PATH prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    string(PREPEND prefix "\${pcfiledir}/")
endif()
configure_file(cmake/zep_config.pc.in zep_config.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zep_config.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# Programs find the libraries next to them wherever the tree is.
if(NOT WIN32)
    set_target_properties(zep_config PROPERTIES INSTALL_RPATH "$ORIGIN")
    if(TARGET orvane-config)
        set_target_properties(orvane-config PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    endif()
endif()

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()
set(CPACK_PACKAGE_NAME zep_config)
set(CPACK_PACKAGE_VENDOR "the Orvane server's developers")
set(CPACK_GENERATOR ZIP)
if(WIN32)
    set(system win64)
else()
    set(system ${CMAKE_SYSTEM_NAME})
endif()
# Two archives: what debuggers need is larger than all the rest.
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_ARCHIVE_MAIN_FILE_NAME ${CPACK_PACKAGE_NAME}-${PROJECT_VERSION}-${system})
set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME ${CPACK_ARCHIVE_MAIN_FILE_NAME}-debug)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/after_cpack.cmake)
include(CPack)
foreach(component library development tool)
    cpack_add_component(${component} GROUP main)
endforeach()
if(MINGW)
    cpack_add_component(debug GROUP symbols)
endif()
