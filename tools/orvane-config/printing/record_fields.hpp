// for_each_field(record, visit) calls visit(name, value) for every field of a record, in declaration order.
#pragma once

#include "qel/config/server_settings.hpp"

namespace orvane {

template <class Visit>
void for_each_field(const qel::config::CacheSettings& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/cache_settings.def"
}

template <class Visit>
void for_each_field(const qel::config::HttpSettings& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/http_settings.def"
}

template <class Visit>
void for_each_field(const qel::config::HttpsSettings& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/https_settings.def"
}

template <class Visit>
void for_each_field(const qel::config::LogHandlerInfo& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/log_handler_info.def"
}

template <class Visit>
void for_each_field(const qel::config::ProfileDirective& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/profile_directive.def"
}

template <class Visit>
void for_each_field(const qel::config::RequestQueueTime& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/request_queue_time.def"
}

template <class Visit>
void for_each_field(const qel::config::WorkerMemoryLimit& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/worker_memory_limit.def"
}

template <class Visit>
void for_each_field(const qel::config::WorkerPoolSettings& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/worker_pool_settings.def"
}

template <class Visit>
void for_each_field(const qel::config::CacheSettingsList& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/cache_settings_list.def"
}

template <class Visit>
void for_each_field(const qel::config::ServerSettings& record, Visit visit) {
#define ZEP_FIELD(name, ...) visit(#name, record.name());
#include "qel/config/fields/server_settings.def"
}

template <class Visit>
void for_each_field(const qel::config::SslContext& record, Visit visit) {
#define QEL_SSL_FIELD(name, ...) visit(#name, record.name());
#include "qel/util/ssl_context_fields.def"
}

/// A list is none, although a record of one field can be made of it.
template <class T>
concept Record = requires(const T& value) {
    for_each_field(value, [](const char*, const auto&) {});
}
&&!requires(const T& value) {
    value.begin();
};

} // namespace orvane
