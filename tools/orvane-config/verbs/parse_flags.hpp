// The first occurrence of every verb that takes the server's flags.
#pragma once

#include "system/tokens.hpp"

#include "qel/config/server_settings.hpp"

#include <boost/system/error_code.hpp>

namespace orvane {

/// Parses `flags` into `settings`. The library's text goes to `err` as it came, its last line ended; a
/// refusal is named behind it. Returns the library's verdict.
boost::system::error_code parse_flags(const Tokens& flags, qel::config::ServerSettings& settings,
                                      std::ostream& err);

/// The same, and validates the settings; problems are reported to `err`.
boost::system::error_code parse_and_validate(const Tokens& flags, qel::config::ServerSettings& settings,
                                             std::ostream& err);

} // namespace orvane
