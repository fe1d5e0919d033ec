// The version of these headers, for a program that compiles against more than one:
//
//     #if ZEP_CONFIG_VERSION_AT_LEAST(1, 2, 0)
//
// The build reads the numbers from here too. build_info.hpp says which version a program is running with.
#pragma once

///@{
/// A part of the version.
#define ZEP_CONFIG_VERSION_MAJOR 1
#define ZEP_CONFIG_VERSION_MINOR 0
#define ZEP_CONFIG_VERSION_PATCH 0
///@}

/// True in the preprocessor if the version is this one or a later one.
#define ZEP_CONFIG_VERSION_AT_LEAST(major, minor, patch)                                                     \
    (ZEP_CONFIG_VERSION_MAJOR > (major) ||                                                                   \
     (ZEP_CONFIG_VERSION_MAJOR == (major) &&                                                                 \
      (ZEP_CONFIG_VERSION_MINOR > (minor) ||                                                                 \
       (ZEP_CONFIG_VERSION_MINOR == (minor) && ZEP_CONFIG_VERSION_PATCH >= (patch)))))
