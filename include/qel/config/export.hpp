// What the library exports.
#pragma once

#if defined(_MSVC_LANG) ? _MSVC_LANG <= 201703L : __cplusplus <= 201703L
#error "zep_config needs C++20: compile with -std=c++20, or /std:c++20"
#endif

/// Marks what the library exports.
#if defined(_WIN32)
#if defined(ZEP_CONFIG_BUILD)
#define ZEP_CONFIG_API __declspec(dllexport)
#else
#define ZEP_CONFIG_API __declspec(dllimport)
#endif
#else
#define ZEP_CONFIG_API __attribute__((visibility("default")))
#endif

// Around classes whose bases or members are of types that are not exported: templates of the C++ library and of Boost. All
// modules of a process share one C++ library and one Boost, so the warnings of Microsoft's compiler do not apply.
// g++ warns that a base class, Boost's error_category, has no virtual destructor: nobody can call it.
#if defined(_MSC_VER)
#define ZEP_CONFIG_QUIET_BEGIN __pragma(warning(push)) __pragma(warning(disable : 4251 4275))
#define ZEP_CONFIG_QUIET_END __pragma(warning(pop))
#else
#define ZEP_CONFIG_QUIET_BEGIN                                                                               \
    _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wnon-virtual-dtor\"")
#define ZEP_CONFIG_QUIET_END _Pragma("GCC diagnostic pop")
#endif
