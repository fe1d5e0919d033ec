// class CacheSettingsList. Its fields, with types and meanings: fields/cache_settings_list.def.
#pragma once

#include "qel/config/cache_settings.hpp"
#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// The caches of a server.
class ZEP_CONFIG_API CacheSettingsList {
#define ZEP_RECORD CacheSettingsList
#define ZEP_FIELDS "qel/config/fields/cache_settings_list.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
