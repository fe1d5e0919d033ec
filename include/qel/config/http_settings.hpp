// class HttpSettings. Its fields, with types and meanings: fields/http_settings.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// A plain HTTP listener.
class ZEP_CONFIG_API HttpSettings {
#define ZEP_RECORD HttpSettings
#define ZEP_FIELDS "qel/config/fields/http_settings.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
