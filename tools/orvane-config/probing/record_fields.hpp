// for_each_field(record, visit) calls visit(name, value) for every field of a record or of the TLS settings, in declaration order.
#pragma once

#include "qel/config/for_each_field.hpp"

namespace orvane {

using qel::config::for_each_field;

template <class Visit>
void for_each_field(const qel::config::SslContext& record, Visit visit) {
#define QEL_SSL_FIELD(name, ...) visit(#name, record.name());
#include "qel/util/ssl_context_fields.def"
}

template <class T>
concept Record = requires(const T& value) {
    for_each_field(value, [](const char*, const auto&) {});
};

} // namespace orvane
