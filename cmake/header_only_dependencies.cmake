# For a cross build: the same header-only libraries, by a directory of links to them. So no other header of this machine is
# found.
set(dependencies ${PROJECT_BINARY_DIR}/dependencies)
file(MAKE_DIRECTORY ${dependencies})
foreach(name boost utf8 utf8.h)
    if(NOT EXISTS /usr/include/${name})
        message(FATAL_ERROR "/usr/include/${name} is missing")
    endif()
    file(CREATE_LINK /usr/include/${name} ${dependencies}/${name} SYMBOLIC)
endforeach()

set(ZEP_CONFIG_UTFCPP_INCLUDE_DIR ${dependencies} CACHE PATH "where utf8.h is")
if(NOT TARGET Boost::headers)
    add_library(Boost::headers INTERFACE IMPORTED GLOBAL)
    target_include_directories(Boost::headers SYSTEM INTERFACE ${dependencies})
endif()

if(NOT MINGW)
    return()
endif()
# Puts the shared C++ runtime next to the binaries: streams, strings and exceptions cross the DLL boundary, so every module
# must use the same one.
if(NOT CMAKE_RUNTIME_OUTPUT_DIRECTORY)
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()
set(runtime_dlls)
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
        OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    if(NOT IS_ABSOLUTE ${file})
        message(FATAL_ERROR "the compiler has no ${name}")
    endif()
    list(APPEND runtime_dlls ${file})
    file(COPY ${file} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY} FOLLOW_SYMLINK_CHAIN)
endforeach()
