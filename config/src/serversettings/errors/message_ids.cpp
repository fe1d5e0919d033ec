// The exceptions whose texts are in the platform's message catalog.
#include "errors/message_ids.hpp"

#include <utility>

namespace qel::config {

static constexpr char config_catalog[] = "ZEP:server:Config";

CacheProviderBadFormat::CacheProviderBadFormat(std::u16string definition)
    : MsgIDException(msgid::MessageID{config_catalog, "CacheProviderBadFormat", {std::move(definition)}}) {}

StartCacheLocalhost::StartCacheLocalhost(std::string host)
    : MsgIDException(msgid::MessageID{config_catalog, "StartCacheLocalhost", {std::move(host)}}) {}

} // namespace qel::config
