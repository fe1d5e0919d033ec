# zep_config_rules(TARGET): sets how a target of this project is compiled.

add_library(zep_config_rules INTERFACE)
target_compile_features(zep_config_rules INTERFACE cxx_std_20)
if(MSVC)
    target_compile_options(zep_config_rules INTERFACE
        /W4 /permissive- /utf-8 /Zc:__cplusplus /EHsc
        $<$<CXX_COMPILER_ID:MSVC>:/Zc:preprocessor>
        $<$<BOOL:${ZEP_CONFIG_WERROR}>:/WX>
        # clang-cl understands both sets of options.
        $<$<CXX_COMPILER_ID:Clang>:-Wshadow;-Wconversion;/clang:-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=>)
else()
    target_compile_options(zep_config_rules INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        $<$<BOOL:${ZEP_CONFIG_WERROR}>:-Werror>
        # g++ 12 reports overlapping copies in the code of std::string.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
        # Its thread sanitizer does not support fences; Asio has some, in code that is not used here.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-tsan>
        # Throw locations have the same text on every machine.
        -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()
if(WIN32)
    # Asio needs the Windows version, 10. <windows.h> must not define min and max.
    target_compile_definitions(zep_config_rules INTERFACE _WIN32_WINNT=0x0A00 NOMINMAX)
    target_link_libraries(zep_config_rules INTERFACE ws2_32 mswsock)
endif()
if(ZEP_CONFIG_SANITIZE)
    target_compile_options(zep_config_rules INTERFACE
        -fsanitize=${ZEP_CONFIG_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(zep_config_rules INTERFACE -fsanitize=${ZEP_CONFIG_SANITIZE})
endif()

function(zep_config_rules target)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zep_config_rules>)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    if(MSVC)
        # Debug and release builds do not mix in one process, so their names differ.
        set_target_properties(${target} PROPERTIES DEBUG_POSTFIX d)
    endif()
endfunction()
