// The members of every settings record, made from the field lists.
#include "qel/config/server_settings.hpp"

namespace qel::config {

#define ZEP_RECORD CacheSettings
#define ZEP_FIELDS "qel/config/fields/cache_settings.def"
#include "records/define_record.inl"

#define ZEP_RECORD CacheSettingsList
#define ZEP_FIELDS "qel/config/fields/cache_settings_list.def"
#include "records/define_record.inl"

#define ZEP_RECORD HttpSettings
#define ZEP_FIELDS "qel/config/fields/http_settings.def"
#include "records/define_record.inl"

#define ZEP_RECORD HttpsSettings
#define ZEP_FIELDS "qel/config/fields/https_settings.def"
#include "records/define_record.inl"

#define ZEP_RECORD LogHandlerInfo
#define ZEP_FIELDS "qel/config/fields/log_handler_info.def"
#include "records/define_record.inl"

#define ZEP_RECORD ProfileDirective
#define ZEP_FIELDS "qel/config/fields/profile_directive.def"
#include "records/define_record.inl"

#define ZEP_RECORD RequestQueueTime
#define ZEP_FIELDS "qel/config/fields/request_queue_time.def"
#include "records/define_record.inl"

#define ZEP_RECORD WorkerMemoryLimit
#define ZEP_FIELDS "qel/config/fields/worker_memory_limit.def"
#include "records/define_record.inl"

#define ZEP_RECORD WorkerPoolSettings
#define ZEP_FIELDS "qel/config/fields/worker_pool_settings.def"
#include "records/define_record.inl"

#define ZEP_RECORD ServerSettings
#define ZEP_FIELDS "qel/config/fields/server_settings.def"
#include "records/define_record.inl"

} // namespace qel::config
