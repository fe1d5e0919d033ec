// The first step of verbs that need the settings of a line: accepting or refusing it.
#pragma once

#include "verbs/input.hpp"

#include "qel/config/server_settings.hpp"

#include <iosfwd>
#include <optional>

namespace orvane {

/// The settings with which the server would run. None when it would refuse the line; `err` then says what `check` says.
std::optional<qel::config::ServerSettings> accepted(const Input& input, std::ostream& err);

} // namespace orvane
