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
