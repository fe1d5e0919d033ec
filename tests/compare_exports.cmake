# Compares the names that a library exports with the list under version control:
# cmake -DNM=... -DLIBRARY=... -DLIST=... -P compare_exports.cmake
execute_process(COMMAND ${NM} --dynamic --defined-only --demangle ${LIBRARY}
    OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
# A name may hold brackets, which CMake does not like in lists.
string(REGEX REPLACE "\\[abi:cxx11\\]" "" lines "${lines}")
# Address and kind go, and so does the version; the version itself is not a name.
string(REGEX REPLACE "0[0-9a-f]+ [A-Z] " "" lines "${lines}")
string(REGEX REPLACE "@+ZEP_CONFIG_[0-9]+" "" lines "${lines}")
string(REGEX REPLACE "\n+" ";" exported "${lines}")
list(FILTER exported EXCLUDE REGEX "^(ZEP_CONFIG_[0-9]+)?$")
list(REMOVE_DUPLICATES exported)
list(SORT exported)
file(STRINGS ${LIST} expected)

set(unlisted ${exported})
list(REMOVE_ITEM unlisted ${expected})
set(missing ${expected})
list(REMOVE_ITEM missing ${exported})
foreach(name IN LISTS unlisted)
    message("exported, but not listed: ${name}")
endforeach()
foreach(name IN LISTS missing)
    message("listed, but not exported: ${name}")
endforeach()
if(unlisted OR missing)
    message(FATAL_ERROR "The interface has changed. If it is meant to, change ${LIST} too.")
endif()
