// class WorkerPoolSettings. Its fields, with types and meanings: fields/worker_pool_settings.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/request_queue_time.hpp"
#include "qel/config/types.hpp"
#include "qel/config/worker_memory_limit.hpp"

namespace qel::config {

/// The worker pool's limits.
class ZEP_CONFIG_API WorkerPoolSettings {
#define ZEP_RECORD WorkerPoolSettings
#define ZEP_FIELDS "qel/config/fields/worker_pool_settings.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
