// class LogHandlerInfo. Its fields, with types and meanings: fields/log_handler_info.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"
#include "qel/logging/log_content_type.hpp"
#include "qel/logging/log_format_type.hpp"

namespace qel::config {

/// One additional log handler.
class ZEP_CONFIG_API LogHandlerInfo {
#define ZEP_RECORD LogHandlerInfo
#define ZEP_FIELDS "qel/config/fields/log_handler_info.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
