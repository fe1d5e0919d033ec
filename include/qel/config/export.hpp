// What the library exports.
#pragma once

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

#if defined(_MSC_VER)
// Exported classes have members and bases of types that are not exported: templates of the C++ library and of Boost.
// All modules of a process share one C++ library and one Boost, so the warning does not apply.
#pragma warning(disable : 4251 4275)
#endif
