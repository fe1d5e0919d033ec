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

#if defined(_MSC_VER)
// Exported classes have members and bases of types that are not exported: templates of the C++ library and of Boost.
// All modules of a process share one C++ library and one Boost, so the warning does not apply.
#pragma warning(disable : 4251 4275)
#endif
