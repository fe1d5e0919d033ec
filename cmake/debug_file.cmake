# For MinGW: binaries that do not depend on when and where they are built, and what a debugger needs in separate files.
if(MINGW)
    # ccache may have made paths relative to the build directory. The last map that fits is used. Boost's headers would have
    # the shorter one of two paths.
    file(RELATIVE_PATH path_to_source ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
    set(path_maps ${CMAKE_BINARY_DIR}=. ${PROJECT_SOURCE_DIR}/= ${path_to_source}/= ${CMAKE_BINARY_DIR}/=)
    list(TRANSFORM path_maps PREPEND -ffile-prefix-map=)
    target_compile_options(zep_config_rules INTERFACE ${path_maps} -fno-canonical-system-headers)
    target_link_options(zep_config_rules INTERFACE -Wl,--no-insert-timestamp)
endif()

# zep_config_debug_file(TARGET): puts it into a file that is named like the DLL, with .debug after it. gdb finds that file beside
# the DLL.
function(zep_config_debug_file target)
    if(NOT MINGW)
        return()
    endif()
    set(dll $<TARGET_FILE:${target}>)
    target_compile_options(${target} PRIVATE -g)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug ${dll} ${dll}.debug
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --strip-unneeded --add-gnu-debuglink=${dll}.debug ${dll})
endfunction()
