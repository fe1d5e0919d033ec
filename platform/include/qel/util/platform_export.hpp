// What the platform library exports.
#pragma once

/// Marks what the platform library exports.
#if defined(_WIN32)
#if defined(ZEP_CONFIG_PLATFORM_BUILD)
#define ZEP_CONFIG_PLATFORM_API __declspec(dllexport)
#else
#define ZEP_CONFIG_PLATFORM_API __declspec(dllimport)
#endif
#else
#define ZEP_CONFIG_PLATFORM_API __attribute__((visibility("default")))
#endif

// Around classes whose bases or members are of types that are not exported: templates of the C++ library and of Boost. All
// modules of a process share one C++ library and one Boost, so the warnings of Microsoft's compiler do not apply.
#if defined(_MSC_VER)
#define ZEP_CONFIG_PLATFORM_QUIET_BEGIN __pragma(warning(push)) __pragma(warning(disable : 4251 4275))
#define ZEP_CONFIG_PLATFORM_QUIET_END __pragma(warning(pop))
#else
#define ZEP_CONFIG_PLATFORM_QUIET_BEGIN
#define ZEP_CONFIG_PLATFORM_QUIET_END
#endif
