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
