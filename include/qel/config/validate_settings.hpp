// Checks of the relations between settings.
#pragma once

#include "qel/config/error_code.hpp"
#include "qel/config/export.hpp"
#include "qel/config/server_settings.hpp"

#include <set>
#include <string>
#include <vector>

namespace qel::config {

/// One complete message per problem, in the order the rules find them.
using ProblemList = std::vector<std::u16string>;

/// The texts of the flags that the problems involve, in ascending order.
using FlagSet = std::set<std::u16string>;

/// Checks what no single flag can: settings that exclude or require each other, directories inside each
/// other, two listeners on one address, incomplete TLS settings. Collects every problem.
///
/// Empties `problems` and `flags` first. Returns success, or incompatible_flags when there is any problem.
/// Reads the file system to compare directories. Throws std::bad_alloc only; the containers then hold what
/// was found so far.
[[nodiscard]] ZEP_CONFIG_API boost::system::error_code
validate_settings(const ServerSettings& settings, ProblemList& problems, FlagSet& flags);

} // namespace qel::config
