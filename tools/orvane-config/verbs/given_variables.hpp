// The variables that are given with --env.
#pragma once

#include "formats/source_files.hpp"
#include "verbs/call.hpp"

#include <vector>

namespace orvane {

/// Of files, and those that are given by themselves.
std::vector<Variable> variables_in(const Call& call);

} // namespace orvane
