// An answer as a list of remarks, for editors and CI.
#pragma once

#include "explaining/verdict.hpp"
#include "verbs/call.hpp"

#include <string>
#include <vector>

namespace orvane {

/// What the configuration is called there.
std::string name_of(const Call& call, const Verdict& verdict);

/// Prints it in the format that was asked for, and keeps it for whoever joins the answers about several files.
void list(const Call& call, std::vector<Case> cases);

} // namespace orvane
