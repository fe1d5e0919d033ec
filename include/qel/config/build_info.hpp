// Names and versions of this build.
#pragma once

#include "qel/config/export.hpp"

namespace qel::config {

/// "Orvane". A static string; throws nothing.
ZEP_CONFIG_API const char* product_name();

} // namespace qel::config

extern "C" {

/// Four parts: major, minor, patch, and a build number of six digits, such as "1.0.0.000042".
ZEP_CONFIG_API extern const char* const zep_config_version;

/// Eleven characters, such as "Jan  2 2030": a day below ten is padded with a space.
ZEP_CONFIG_API extern const char* const zep_config_build_date;

/// The library's file below the installation root. It names the production platform's file on every platform.
ZEP_CONFIG_API extern const char* const zep_config_relative_path;
}
