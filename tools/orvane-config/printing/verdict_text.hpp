// A verdict for people.
#pragma once

#include "explaining/verdict.hpp"

#include <iosfwd>

namespace orvane {

/// After which texts their ids are printed.
enum class Ids { of_warnings, everywhere };

/// The library's text as it came, its last line ended, then the problem report; then what this tool has to add: the
/// verdict, where each fault is and how to fix it, or the warnings. On a terminal the place is marked.
void print_verdict(const Verdict& verdict, std::ostream& err, Ids ids = Ids::of_warnings);

/// Only the warnings, as above.
void print_warnings(const Verdict& verdict, std::ostream& err);
/// The same, with another word for what they are.
void print_warnings(const std::vector<Warning>& warnings, const SourcePlaces& places, const char* what,
                    std::ostream& err);

/// Only the faults, and how each was fixed.
void print_fixes(const Verdict& verdict, std::ostream& err, Ids ids = Ids::of_warnings);

} // namespace orvane
