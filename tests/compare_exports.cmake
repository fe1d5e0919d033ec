# Compares the names that a library exports with the list under version control:
# cmake -DNM=... -DCXXFILT=... -DLIBRARY=... -DWINDOWS=0|1 -DLIST=... -P compare_exports.cmake
#
# The two systems differ in two ways, and both are handled only here: a 64-bit unsigned number has another type; and a DLL
# exports a typeinfo, but not the text that it points to.
cmake_minimum_required(VERSION 3.25)
if(WINDOWS)
    set(options --defined-only)
else()
    set(options --dynamic --defined-only)
endif()
execute_process(COMMAND ${NM} ${options} ${LIBRARY} COMMAND ${CXXFILT}
    OUTPUT_VARIABLE lines RESULTS_VARIABLE results)
if(NOT results STREQUAL "0;0")
    message(FATAL_ERROR "${LIBRARY} cannot be read: ${results}")
endif()
file(STRINGS ${LIST} expected)
if(WINDOWS)
    # From an import library, only the names of the imports themselves.
    string(REGEX MATCHALL "[0-9a-f]+ [A-Z] __imp_[^\n]+" lines "${lines}")
    list(TRANSFORM lines REPLACE "__imp_" "")
    list(JOIN lines "\n" lines)
    execute_process(COMMAND ${CMAKE_COMMAND} -E echo "${lines}" COMMAND ${CXXFILT} OUTPUT_VARIABLE lines)
    string(REPLACE "unsigned long long" "unsigned long" lines "${lines}")
    list(FILTER expected EXCLUDE REGEX "^typeinfo name for ")
endif()
# A name may contain brackets, which CMake lists do not handle.
string(REGEX REPLACE "\\[abi:cxx11\\]" "" lines "${lines}")
# Drops the address, the kind and the version; the version itself is not a name.
string(REGEX REPLACE "0[0-9a-f]+ [A-Z] " "" lines "${lines}")
string(REGEX REPLACE "@+ZEP_CONFIG_[0-9]+" "" lines "${lines}")
string(REGEX REPLACE "\n+" ";" exported "${lines}")
list(FILTER exported EXCLUDE REGEX "^(ZEP_CONFIG_[0-9]+)?$")
list(REMOVE_DUPLICATES exported)
list(SORT exported)

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
