// The members of every settings record, made from the field lists.
#include "qel/config/server_settings.hpp"

namespace qel::config {

#define ZEP_EACH_RECORD "records/define_record.inl"
#include "qel/config/detail/each_record.inl"

} // namespace qel::config
