// The grammar of the client access list.
#pragma once

#include "qel/config/types.hpp"

#include <string>

namespace qel::config {

/// <client>[,<client>]*[:<archive>[,<archive>]*]
/// Adds the clients, each with all the archives, to `clients`. Throws std::runtime_error at the first fault;
/// clients met before it stay in the map.
void parse_allowed_clients(std::string config, AccessMap& clients);

} // namespace qel::config
