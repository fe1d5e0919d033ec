// class HttpsSettings. Its fields, with types and meanings: fields/https_settings.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/http_settings.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// An HTTPS listener.
class ZEP_CONFIG_API HttpsSettings {
#define ZEP_RECORD HttpsSettings
#define ZEP_FIELDS "qel/config/fields/https_settings.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
