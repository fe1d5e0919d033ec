# How every target of this project is compiled: zep_config_rules(TARGET).

add_library(zep_config_rules INTERFACE)
target_compile_features(zep_config_rules INTERFACE cxx_std_20)
if(MSVC)
    target_compile_options(zep_config_rules INTERFACE
        /W4 /permissive- /utf-8 /Zc:__cplusplus /EHsc
        $<$<CXX_COMPILER_ID:MSVC>:/Zc:preprocessor>
        $<$<BOOL:${ZEP_CONFIG_WERROR}>:/WX>
        # clang-cl knows both languages.
        $<$<CXX_COMPILER_ID:Clang>:-Wshadow;-Wconversion;/clang:-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=>)
else()
    target_compile_options(zep_config_rules INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        $<$<BOOL:${ZEP_CONFIG_WERROR}>:-Werror>
        # g++ 12 sees overlapping copies in std::string's own code.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
        # Its thread sanitizer does not follow fences; Asio has some, in code that is not used here.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-tsan>
        # Throw locations read the same on every machine.
        -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()
if(WIN32)
    # Windows 10: Asio wants to know. And <windows.h> without its macros min and max.
    target_compile_definitions(zep_config_rules INTERFACE _WIN32_WINNT=0x0A00 NOMINMAX)
    target_link_libraries(zep_config_rules INTERFACE ws2_32 mswsock)
endif()
# Overflow of signed numbers, in code that cannot do without, wraps around.
if(NOT MSVC)
    set(zep_config_wrapping -fwrapv)
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
        # A debug build and a release do not mix in one process: their names differ.
        set_target_properties(${target} PROPERTIES DEBUG_POSTFIX d)
    endif()
endfunction()
