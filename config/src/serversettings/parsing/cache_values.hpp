// Cache definitions.
#pragma once

#include "qel/config/cache_settings.hpp"

#include <string_view>

namespace qel::config {

/// <provider>@[<host>:]<port>
/// A cache to attach to; the host is "localhost" if not given. Throws CacheProviderBadFormat.
CacheSettings parse_cache_settings(std::u16string_view value);

/// The same for a cache to start. Also throws StartCacheLocalhost if its host is not this machine.
CacheSettings parse_start_cache(std::u16string_view value);

} // namespace qel::config
