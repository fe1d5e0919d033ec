// What preflight found, for programs. docs/tool-json.md describes it.
#pragma once

#include "explaining/verdict.hpp"
#include "preflight/report.hpp"

#include <string>

namespace orvane {

/// `verdict` is that of the accepted line that the report is about.
std::string preflight_json(const Verdict& verdict, const preflight::Report& report);

} // namespace orvane
