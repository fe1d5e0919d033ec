# Installs a build, builds the consumer against what was installed, and runs it.
cmake_policy(SET CMP0054 NEW)
set(stage ${WORK}/stage)
file(REMOVE_RECURSE ${WORK})

function(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}\nfailed: ${result}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${stage})
set(options -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${stage} -DCMAKE_FIND_ROOT_PATH=${stage} -DCMAKE_CXX_FLAGS=${FLAGS})
if(TOOLCHAIN)
    # Beside the DLLs, as programs stand on Windows.
    list(APPEND options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DBOOST_HEADERS=${BOOST_HEADERS}
        -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${stage}/bin/win64)
endif()
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build ${options})
run(${CMAKE_COMMAND} --build ${WORK}/build)
if(TOOLCHAIN)
    run(${EMULATOR} ${stage}/bin/win64/consumer.exe)
else()
    run(${WORK}/build/consumer)
endif()
