// The grammar of the client access list.
#pragma once

#include "qel/config/types.hpp"

#include <string_view>

namespace qel::config {

/// <client>[,<client>]*[:<archive>[,<archive>]*]
/// Adds the clients, each with all the archives, to `clients`. Throws std::runtime_error at the first fault; what
/// was added before it stays in the map. `latest` is the client added last, or the end: the next one is tried after it.
void parse_allowed_clients(std::string_view config, AccessMap& clients, AccessMap::iterator& latest);

} // namespace qel::config
