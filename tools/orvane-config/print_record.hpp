// A record as text, one field a line.
#pragma once

#include "qel/config/server_settings.hpp"

#include <iosfwd>

namespace orvane {

/// Writes `field = value` for every field that is set: `http.port = 9910`, `lumo_root[0] = /opt/runtime`.
/// Control characters are written as \u and four hexadecimal digits, so that a value never leaves its line.
void print_record(const qel::config::ServerSettings& settings, std::ostream& out);

} // namespace orvane
