// A line in the format of --to.
#pragma once

#include "probing/probing.hpp"
#include "verbs/call.hpp"

#include <string>

namespace orvane {

/// For standard output, which then leaves every byte as it is.
std::string written(const Call& call, const CommandLine& line);

} // namespace orvane
