// class ServerSettings. Its fields, with types and meanings: fields/server_settings.def.
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

/// The whole configuration of a server.
///
/// A plain value: no operation checks its content. A default-constructed one holds no configuration: every optional,
/// path and container is empty, and every switch is off. Whoever uses a setting applies the default.
class ZEP_CONFIG_API ServerSettings {
#define ZEP_RECORD ServerSettings
#define ZEP_FIELDS "qel/config/fields/server_settings.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
