// Names and versions of this build.
#pragma once

#include "qel/config/export.hpp"

namespace qel::config {

/// "Orvane". A static string.
ZEP_CONFIG_API const char* product_name() noexcept;

} // namespace qel::config

extern "C" {

/// The version of the library that is running, in four parts: major, minor, patch, and a build number of six digits,
/// such as "1.0.0.000042".
ZEP_CONFIG_API extern const char* const zep_config_version;

/// The build date: eleven characters, such as "Jan  2 2030"; a day below ten is padded with a space.
ZEP_CONFIG_API extern const char* const zep_config_build_date;

/// The path of the library's file below the installation root. It is the path on the production platform, on every
/// platform.
ZEP_CONFIG_API extern const char* const zep_config_relative_path;
}
