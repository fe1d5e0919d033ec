// Checks settings against each other.
#pragma once

#include "qel/config/error_code.hpp"
#include "qel/config/export.hpp"
#include "qel/config/server_settings.hpp"

#include <set>
#include <string>
#include <vector>

namespace qel::config {

/// One complete message per problem, in the order of the rules.
using ProblemList = std::vector<std::u16string>;

/// The texts of the flags that the problems involve, in ascending order.
using FlagSet = std::set<std::u16string>;

/// Checks what cannot be checked flag by flag: settings that conflict with or require each other, directories inside
/// each other, two listeners on one address, incomplete TLS settings. Collects every problem.
///
/// Empties `problems` and `flags` first. Returns success, or incompatible_flags if there is any problem. Reads the
/// file system to compare directories. Throws only std::bad_alloc; the containers then hold what was found so far.
[[nodiscard]] ZEP_CONFIG_API boost::system::error_code
validate_settings(const ServerSettings& settings, ProblemList& problems, FlagSet& flags);

} // namespace qel::config
