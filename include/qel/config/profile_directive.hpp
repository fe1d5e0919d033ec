// class ProfileDirective. Its fields, with types and meanings: fields/profile_directive.def.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

namespace qel::config {

/// One profiling directive.
class ZEP_CONFIG_API ProfileDirective {
#define ZEP_RECORD ProfileDirective
#define ZEP_FIELDS "qel/config/fields/profile_directive.def"
#include "qel/config/detail/declare_record.inl"
};

} // namespace qel::config
