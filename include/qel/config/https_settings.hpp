// An HTTPS listener.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/http_settings.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// An HTTPS listener. Fields, types and meanings: fields/https_settings.def.
#define ZEP_RECORD HttpsSettings
#define ZEP_FIELDS "qel/config/fields/https_settings.def"
#include "qel/config/detail/declare_record.inl"

} // namespace qel::config
