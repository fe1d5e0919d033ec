// The library's verdict on a command line, and all that can be said about it.
#pragma once

#include "explaining/advice.hpp"
#include "explaining/warnings.hpp"

#include <iosfwd>
#include <string>
#include <vector>

namespace orvane {

struct Verdict {
    CommandLine line;
    Answer answer;                 ///< the library's, for the line as it stands
    Diagnosis diagnosis;           ///< of an accepted line, without faults
    std::vector<Advice> advice;    ///< for each fault of the diagnosis
    Effects effects;               ///< of an accepted line, if they are known
    std::vector<Warning> warnings; ///< about an accepted line
    bool effects_known;            ///< not of a refused line, and not of a very long one

    /// Whether the server would start with it.
    bool accepted() const;
    /// What `check` ends with.
    boost::system::error_code code() const;
};

Verdict judge(const Tokens& tokens, bool with_origins, const WarningIds& ignored = {});

/// The library's text as it came, its last line ended, then the problem report; then what this tool has to add: the
/// verdict, where each fault is and how to mend it, or the warnings. On a terminal the place is marked.
void explain(const Verdict& verdict, std::ostream& err);

} // namespace orvane
