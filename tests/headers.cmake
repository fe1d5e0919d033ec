# Every public header compiles alone, and all of them together with every compiler, on Windows after <windows.h>. No macro of
# ours remains defined except those with the library's prefix. What is not meant to compile does not, and says why.
set(include ${SOURCE}/include ${SOURCE}/platform/include)
set(flags -I${SOURCE}/include -I${SOURCE}/platform/include)
if(BOOST_HEADERS)
    list(APPEND flags -isystem ${BOOST_HEADERS} -D_WIN32_WINNT=0x0A00)
endif()
set(problems "")
foreach(compiler IN LISTS COMPILERS)
    execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/use/every_warning ${compiler} OUTPUT_VARIABLE warnings_${compiler})
    separate_arguments(warnings_${compiler} UNIX_COMMAND "${warnings_${compiler}}")
    list(LENGTH warnings_${compiler} count)
    if(count LESS 20)
        message(FATAL_ERROR "${compiler} has few warnings: ${warnings_${compiler}}")
    endif()
endforeach()

# The functions below get the source as the first line of a program, and options of the compiler.
macro(run_compiler compiler source)
    file(WRITE ${WORK}/header.cpp "${source}")
    execute_process(COMMAND ${compiler} -std=c++20 ${warnings_${compiler}} ${flags} ${ARGN} ${WORK}/header.cpp
        OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE result)
endmacro()

function(compile compiler source)
    run_compiler(${compiler} "${source}" ${ARGN})
    if(NOT result EQUAL 0)
        set(problems "${problems}${compiler}, ${source}${errors}\n" PARENT_SCOPE)
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# refuse(WHY TIMES SOURCE OPTIONS...): so many errors, the first one among them, must match WHY.
function(refuse why times source)
    run_compiler(${compiler} "${source}" -fsyntax-only ${ARGN})
    string(REGEX MATCH "error: [^\n]*" first "${errors}")
    string(REGEX MATCHALL "error: [^\n]*(${why})" matching "${errors}")
    list(LENGTH matching found)
    if(NOT first MATCHES "${why}" OR NOT found EQUAL times)
        set(problems "${problems}${found} of ${times} refused: ${source}${errors}\n" PARENT_SCOPE)
    endif()
endfunction()

# The names of all macros that our files define.
file(GLOB_RECURSE files ${SOURCE}/include/*.* ${SOURCE}/platform/include/*.*)
set(own "")
set(all "")
foreach(file ${files})
    file(STRINGS ${file} defines REGEX "^ *# *define ")
    foreach(define ${defines})
        string(REGEX REPLACE "^ *# *define +([A-Za-z0-9_]+).*" "\\1" name "${define}")
        list(APPEND own ${name})
    endforeach()
endforeach()
list(REMOVE_DUPLICATES own)

list(GET COMPILERS 0 compiler)
foreach(root ${include})
    file(GLOB_RECURSE headers RELATIVE ${root} ${root}/*.hpp)
    foreach(header ${headers})
        compile(${compiler} "#include \"${header}\"\n" -fsyntax-only)
        string(APPEND all "#include \"${header}\"\n")
    endforeach()
endforeach()
# Another compiler warns of other things, and what macros break is broken among others, too.
foreach(other ${COMPILERS})
    if(WINDOWS)
        compile(${other} "#include <windows.h>\n${all}" -fsyntax-only)
    else()
        compile(${other} "${all}" -fsyntax-only)
    endif()
endforeach()

compile(${compiler} "${all}" -E -dM)
list(LENGTH own count)
if(NOT output MATCHES "#define ZEP_CONFIG_API " OR count LESS 5)
    message(FATAL_ERROR "the macros cannot be listed")
endif()
foreach(name ${own})
    if(NOT name MATCHES "^ZEP_CONFIG_" AND output MATCHES "#define ${name}[ (]")
        string(APPEND problems "${name} is left defined: undefine it at the end of the header that defines it\n")
    endif()
endforeach()

# A program that counts in nanoseconds would read every duration wrong.
refuse("The library counts microseconds" 1 "#include \"qel/config/types.hpp\"\n" -DBOOST_DATE_TIME_POSIX_TIME_STD_CONFIG)
refuse("zep_config needs C\\+\\+20" 1 "#include \"qel/config/config.hpp\"\n" -std=c++17)
# What the headers turn off for themselves stays on for the program.
refuse("non-virtual" 1 "${all}struct Base { virtual void act(); };\n")
# An owner without a name removes its file at once, and a reader without a use reads for nothing.
refuse("nodiscard" 7 "#include \"qel/config/config.hpp\"\nusing namespace qel::config;
void unused(const ServerSettings&, const tcp_endpoint&);
void unused(const ServerSettings& settings, const tcp_endpoint& control) {
    scoped_pid_file(Path(), 1);
    scoped_master_pid_file(settings, 1);
    scoped_control_endpoint_file(settings, control);
    scoped_http_endpoint_file(settings, {}, HTTPProtocol::http);
    read_master_pid(settings);
    read_http_endpoint(settings, HTTPProtocol::http);
    read_control_endpoint(settings);
}\n" -include boost/asio/ip/tcp.hpp)
if(problems)
    message(FATAL_ERROR "${problems}")
endif()
