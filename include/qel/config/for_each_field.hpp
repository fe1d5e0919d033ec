// The fields of a record as data: names and values.
#pragma once

#include "qel/config/server_settings.hpp"

namespace qel::config {

namespace detail {
#define ZEP_EACH_RECORD "qel/config/detail/visit_fields.inl"
#include "qel/config/detail/each_record.inl"
} // namespace detail

/// Calls visit(name, value) for every field of `record`, one of the ten records, in declaration order. The name is a
/// const char*, the value a const reference. Throws what `visit` throws.
template <class Record, class Visit>
auto for_each_field(const Record& record, Visit visit) -> decltype(detail::visit_fields(&record, visit)) {
    detail::visit_fields(&record, visit);
}

} // namespace qel::config
