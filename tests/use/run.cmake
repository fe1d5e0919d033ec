# Builds examples/server_startup against the library in one WAY, and lets it live a server's life. The ways: find_package
# and pkg_config on what `cmake --install` gives, add_subdirectory, zip (that of Windows), and debian (the packages).
cmake_policy(SET CMP0054 NEW)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(stage ${WORK}/stage)
set(example ${SOURCE}/examples/server_startup)
set(ENV{ZEP_CONFIG_WINE} ${BUILD}/wine)

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}\nfailed: ${result}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# build(PROJECT OPTIONS...) in a folder of the project's name; programs go beside the DLLs where there are any.
function(build project)
    get_filename_component(name ${project} NAME)
    set(options -G ${GENERATOR} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_CXX_COMPILER=${CXX}
        -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${programs})
    if(TOOLCHAIN)
        list(APPEND options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DBoost_INCLUDE_DIR=${BOOST_HEADERS})
    endif()
    run(${CMAKE_COMMAND} -S ${project} -B ${WORK}/${name} ${options} ${ARGN})
    run(${CMAKE_COMMAND} --build ${WORK}/${name})
endfunction()

set(programs ${WORK}/bin)
if(WAY STREQUAL "add_subdirectory")
    # As the release preset has it, so that what one compiles the other finds in the compiler cache.
    set(FLAGS "")
    build(${SOURCE}/tests/use/embedding -DZEP_CONFIG_SOURCE=${SOURCE} -DZEP_CONFIG_WERROR=ON
        -DCMAKE_BUILD_TYPE=Release)
elseif(WAY STREQUAL "zip")
    run(${CMAKE_COMMAND} -E chdir ${WORK} ${CPACK} -G ZIP --config ${BUILD}/CPackConfig.cmake -B ${WORK}/zip)
    file(GLOB zip ${WORK}/zip/*.zip)
    file(ARCHIVE_EXTRACT INPUT ${zip} DESTINATION ${WORK})
    get_filename_component(name ${zip} NAME_WLE)
    file(RENAME ${WORK}/${name} ${stage})
elseif(WAY STREQUAL "debian")
    set(FLAGS "")
    run(${CMAKE_COMMAND} -S ${SOURCE} --preset debian -B ${WORK}/build -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
    run(${CMAKE_COMMAND} --build ${WORK}/build)
    run(${CPACK} --config ${WORK}/build/CPackConfig.cmake -B ${WORK}/packages)
    file(GLOB packages ${WORK}/packages/*.deb)
    list(TRANSFORM packages REPLACE "^.*/([^_]*)_.*$" "\\1" OUTPUT_VARIABLE names)
    string(REGEX MATCH "^[0-9]+" soname ${VERSION})
    if(NOT names STREQUAL "libzep-config-dev;libzep-config${soname};orvane-config")
        message(FATAL_ERROR "packages: ${packages}")
    endif()
    run(${LINTIAN} --allow-root --fail-on error ${packages})
    foreach(package ${packages})
        run(dpkg-deb -x ${package} ${WORK}/stage)
    endforeach()
    set(stage ${WORK}/stage/usr)
else()
    run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${stage})
endif()

if(WAY STREQUAL "find_package" OR WAY STREQUAL "zip")
    if(TOOLCHAIN)
        set(programs ${stage}/bin/win64)
    endif()
    foreach(project ${SOURCE}/tests/use ${example})
        build(${project} -DCMAKE_PREFIX_PATH=${stage} -DCMAKE_FIND_ROOT_PATH=${stage})
    endforeach()
    run(${EMULATOR} ${programs}/consumer${SUFFIX})
elseif(WAY STREQUAL "pkg_config" OR WAY STREQUAL "debian")
    file(GLOB pkgconfig ${stage}/lib*/pkgconfig ${stage}/lib/*/pkgconfig)
    set(ENV{PKG_CONFIG_PATH} ${pkgconfig})
    set(ENV{LD_LIBRARY_PATH} ${pkgconfig}/..)
    run(${PKG_CONFIG} --modversion zep_config)
    if(NOT output STREQUAL "${VERSION}\n")
        message(FATAL_ERROR "the package has version ${VERSION}, pkg-config says ${output}")
    endif()
    run(${PKG_CONFIG} --cflags --libs zep_config)
    separate_arguments(arguments UNIX_COMMAND "${FLAGS} ${output}")
    file(MAKE_DIRECTORY ${programs})
    run(${CXX} -std=c++20 ${example}/server_startup.cpp ${example}/main_posix.cpp ${arguments} -o
        ${programs}/server_startup)
endif()
if(WAY STREQUAL "debian")
    run(${stage}/bin/orvane-config check --auto-deploy-root D)
endif()

# --- the life of the server

set(server ${EMULATOR} ${programs}/server_startup${SUFFIX})
set(runtime ${WORK}/run)
file(MAKE_DIRECTORY ${runtime})

# refuses(TEXT FLAGS...): does not start with these, and says why.
function(refuses text)
    execute_process(COMMAND ${server} ${ARGN} ERROR_VARIABLE said RESULT_VARIABLE result TIMEOUT 30)
    if(NOT result EQUAL 1 OR NOT said MATCHES "${text}")
        message(FATAL_ERROR "${ARGN}: expected exit code 1 and '${text}', got ${result} and:\n${said}")
    endif()
endfunction()
refuses("unrecognized option: --nonsense\n" --nonsense)
refuses("Syntax|Usage|usage")
refuses("please choose one or the other" --auto-deploy-root D --wait --num-workers 4)
refuses("server_startup: error opening no/such/place" --auto-deploy-root D --pid-root no/such/place)
refuses("server_startup: there is no port 65536" --auto-deploy-root D --control-port 65536
    --endpoint-root ${runtime})

set(flags --auto-deploy-root D --pid-root ${runtime} --endpoint-root ${runtime} --control-port 0
    --http 127.0.0.1:0 --https 0)
# Both run at the same time, the server's standard output going to the visitor's input.
execute_process(COMMAND ${server} ${flags}
    COMMAND ${CMAKE_COMMAND} "-DSERVER=${server}" "-DFLAGS=${flags}" -DRUNTIME=${runtime}
        -P ${CMAKE_CURRENT_LIST_DIR}/visitor.cmake
    OUTPUT_VARIABLE said ERROR_VARIABLE said RESULTS_VARIABLE results TIMEOUT 60)
file(GLOB left ${runtime}/*)
if(NOT results STREQUAL "0;0" OR left)
    message(FATAL_ERROR "the server and its visitor ended with ${results}, left behind '${left}', and said:\n${said}")
endif()
