// The ten records. For each it includes the file ZEP_EACH_RECORD, with ZEP_RECORD (the class) and ZEP_FIELDS (the file
// with its fields) defined; that file undefines both. A record comes after the records that it contains.
#ifndef ZEP_EACH_RECORD
#error "define ZEP_EACH_RECORD, the file to be included for each record, before including each_record.inl"
#endif

#define ZEP_RECORD CacheSettings
#define ZEP_FIELDS "qel/config/fields/cache_settings.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD CacheSettingsList
#define ZEP_FIELDS "qel/config/fields/cache_settings_list.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD HttpSettings
#define ZEP_FIELDS "qel/config/fields/http_settings.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD HttpsSettings
#define ZEP_FIELDS "qel/config/fields/https_settings.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD LogHandlerInfo
#define ZEP_FIELDS "qel/config/fields/log_handler_info.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD ProfileDirective
#define ZEP_FIELDS "qel/config/fields/profile_directive.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD RequestQueueTime
#define ZEP_FIELDS "qel/config/fields/request_queue_time.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD WorkerMemoryLimit
#define ZEP_FIELDS "qel/config/fields/worker_memory_limit.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD WorkerPoolSettings
#define ZEP_FIELDS "qel/config/fields/worker_pool_settings.def"
#include ZEP_EACH_RECORD
#define ZEP_RECORD ServerSettings
#define ZEP_FIELDS "qel/config/fields/server_settings.def"
#include ZEP_EACH_RECORD

#undef ZEP_EACH_RECORD
