// One profiling directive.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// One profiling directive. Fields, types and meanings: fields/profile_directive.def.
#define ZEP_RECORD ProfileDirective
#define ZEP_FIELDS "qel/config/fields/profile_directive.def"
#include "qel/config/detail/declare_record.inl"

} // namespace qel::config
