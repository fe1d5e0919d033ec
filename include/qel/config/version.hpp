// The version of these headers, for a program that compiles against more than one:
//
//     #if ZEP_CONFIG_VERSION_AT_LEAST(1, 2, 0)
//
// The build reads the numbers here too. Which version a program runs with, build_info.hpp says.
#pragma once

///@{
/// A part of the version.
#define ZEP_CONFIG_VERSION_MAJOR 1
#define ZEP_CONFIG_VERSION_MINOR 0
#define ZEP_CONFIG_VERSION_PATCH 0
///@}

/// Whether the version is this one or a later one, for the preprocessor.
#define ZEP_CONFIG_VERSION_AT_LEAST(major, minor, patch)                                                     \
    (ZEP_CONFIG_VERSION_MAJOR > (major) ||                                                                   \
     (ZEP_CONFIG_VERSION_MAJOR == (major) &&                                                                 \
      (ZEP_CONFIG_VERSION_MINOR > (minor) ||                                                                 \
       (ZEP_CONFIG_VERSION_MINOR == (minor) && ZEP_CONFIG_VERSION_PATCH >= (patch)))))
