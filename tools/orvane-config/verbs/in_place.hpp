// A file in which only the tokens that were wrong change.
#pragma once

#include "probing/probing.hpp"
#include "verbs/call.hpp"

#include <string>
#include <vector>

namespace orvane {

/// The one file that --in-place or --diff is about; empty without these. Throws Misused.
std::string file_to_rewrite(const Call& call);

/// Makes of the file's flags the fixed ones, or prints what would change. Throws std::runtime_error where the form of the file
/// does not allow it, and nothing is written then.
void rewrite(const std::string& file, const Tokens& given, const std::vector<Token>& fixed, const Call& call);

} // namespace orvane
