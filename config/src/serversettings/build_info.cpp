// Names and versions of this build.
#include "qel/config/build_info.hpp"

const char* const zep_config_version = ZEP_CONFIG_VERSION_TEXT;
const char* const zep_config_build_date = __DATE__;
const char* const zep_config_relative_path = "bin\\win64\\zep_config.dll";

const char* qel::config::product_name() noexcept {
    return "Orvane";
}
