// class WorkerMemoryLimit. Its fields, with types and meanings: fields/worker_memory_limit.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// Memory limits of the worker pool, in bytes.
class ZEP_CONFIG_API WorkerMemoryLimit {
#define ZEP_RECORD WorkerMemoryLimit
#define ZEP_FIELDS "qel/config/fields/worker_memory_limit.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
