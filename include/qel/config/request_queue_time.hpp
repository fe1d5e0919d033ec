// class RequestQueueTime. Its fields, with types and meanings: fields/request_queue_time.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// Queue-time limits of the worker pool.
class ZEP_CONFIG_API RequestQueueTime {
#define ZEP_RECORD RequestQueueTime
#define ZEP_FIELDS "qel/config/fields/request_queue_time.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
