# Checks that a binary needs only the C++ runtime next to it, our own libraries, and what every system has:
# cmake -DOBJDUMP=... -DBINARY=... -DALLOWED=regex -P check_imports.cmake
execute_process(COMMAND ${OBJDUMP} -p ${BINARY} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(DLL Name: |NEEDED +)[^\n]+" needed "${headers}")
if(NOT needed)
    message(FATAL_ERROR "${BINARY} shows no imports")
endif()
list(TRANSFORM needed REPLACE "^(DLL Name: |NEEDED +)" "")
list(FILTER needed EXCLUDE REGEX "^(${ALLOWED})$")
if(needed)
    message(FATAL_ERROR "${BINARY} needs more than it may: ${needed}")
endif()
