// A line in the format of --to.
#pragma once

#include "probing/probing.hpp"
#include "verbs/call.hpp"

#include <string>

namespace orvane {

/// For standard output, which then leaves every byte as it is. A unit gets the program that its flags were for, unless --program
/// or --redact say otherwise.
std::string written(const Call& call, const CommandLine& line, const std::u16string& program);

} // namespace orvane
