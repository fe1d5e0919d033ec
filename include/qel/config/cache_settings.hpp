// class CacheSettings. Its fields, with types and meanings: fields/cache_settings.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// One cache that the server starts or attaches to.
class ZEP_CONFIG_API CacheSettings {
#define ZEP_RECORD CacheSettings
#define ZEP_FIELDS "qel/config/fields/cache_settings.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
