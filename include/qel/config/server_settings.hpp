// The configuration of a server, whole.
#pragma once

#include "qel/config/cache_settings_list.hpp"
#include "qel/config/export.hpp"
#include "qel/config/http_settings.hpp"
#include "qel/config/https_settings.hpp"
#include "qel/config/log_handler_info.hpp"
#include "qel/config/profile_directive.hpp"
#include "qel/config/types.hpp"
#include "qel/config/worker_pool_settings.hpp"
#include "qel/logging/severity_level.hpp"

namespace qel::config {

/// The one value that describes a server's whole configuration. Its fields are listed with their types
/// and meanings in fields/server_settings.def.
///
/// A plain value: no operation checks content. Default-constructed it holds no configuration at all: every
/// optional is empty, every switch is off, every path and container is empty; defaults are applied by whoever
/// uses a setting.
#define ZEP_RECORD ServerSettings
#define ZEP_FIELDS "qel/config/fields/server_settings.def"
#include "qel/config/detail/declare_record.inl"

} // namespace qel::config
